// Two CV sets side by side.
#pragma once

#include "workbench/compared_sets.h"

#include <QDialog>

#include <filesystem>
#include <optional>
#include <string_view>

class QAction;
class QCheckBox;
class QLabel;
class QMenuBar;
class QPushButton;

namespace karvo
{

class TabbedList;

class Vergleichen : public QDialog
{
    Q_OBJECT

public:
    explicit Vergleichen(Workbench& bench, QWidget* parent = nullptr);

private:
    void build();
    QMenuBar* menus();
    QWidget* buttons();
    QAction* addItem(QMenu& menu, const char* name, Caption caption);
    QPushButton* saveButton();

    void chooseModel(std::string_view menuItem);
    void openFirst();
    void openSecond();
    std::optional<std::filesystem::path> askForList(Caption title);
    void compare();
    void showSides();
    void showLines();
    void lookUp();
    void switchExpertMode(bool on);
    void showExpertMode();
    void save(bool asCsv);

    Workbench& bench_;
    const LanguageTables& texts_;
    ComparedSets sets_;
    std::optional<Comparison> comparison_;
    QLabel* model_;
    QLabel* firstSide_;
    QLabel* secondSide_;
    QLabel* counts_;
    TabbedList* list_;
    QCheckBox* onlyDifferences_;
    QPushButton* compareButton_;
    QPushButton* lookUpButton_;
    QPushButton* save_ = nullptr;
    QAction* expertOn_ = nullptr;
    QAction* expertOff_ = nullptr;
};

} // namespace karvo
