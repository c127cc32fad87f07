// What the two windows share that show a memory byte by byte.
#pragma once

#include "firmware/forms/memory_model.h"
#include "firmware/memory_view.h"
#include "ui/form.h"

#include <filesystem>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace karvo
{

class MemoryWindow : public Form
{
    Q_OBJECT

protected:
    MemoryWindow(Workbench& bench, const char* name, Caption title, QWidget* parent);

    // For the ends of the constructors: behind the buttons of the window's own.
    void addLastButtons();

    const MemoryImage& image() const { return view_.image(); }
    void show(MemoryImage image, const QString& source);
    void compareWith(std::optional<ComparedMemory> other);
    void compareWithBenchList();
    void compareWithVehicle();
    void compareAnewWithBenchList();
    void tell(const Text& note);

    Workbench& bench_;

private:
    void build();
    void buildTable();
    QLayout* viewRow();
    QLayout* searchRow();
    QPushButton* tool(const char* name, Caption caption, std::function<void()> act);
    QPushButton* compareButton();
    void compareWithListFile(const std::filesystem::path& path);
    void chooseListFile();
    void chooseImage();

    void useHexadecimal(bool wanted);
    void showDifferences();
    void showByte();
    std::size_t current() const;
    void goTo(std::size_t address);
    void goToDifference(bool forward);
    void search();
    void copy();
    void save();

    MemoryView view_;
    MemoryModel* model_;
    QTableView* table_;
    QLabel* source_;
    QLabel* differences_;
    QLabel* byte_;
    QLabel* note_;
    QCheckBox* hexadecimal_;
    QLineEdit* wanted_;
    std::vector<QPushButton*> ofBytes_;       // are of use where there are bytes
    std::vector<QPushButton*> ofDifferences_; // where some differ
};

} // namespace karvo
