// Two CV sets side by side.
#pragma once

#include "ui/form.h"
#include "workbench/compared_sets.h"

#include <filesystem>
#include <optional>
#include <string_view>

class QAction;
class QCheckBox;
class QLabel;

namespace karvo
{

class TabbedList;

class Vergleichen : public Form
{
    Q_OBJECT

public:
    explicit Vergleichen(Workbench& bench, QWidget* parent = nullptr);

private:
    void build();
    void addMenus();
    void addSaveButton();

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
