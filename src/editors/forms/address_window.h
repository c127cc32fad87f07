// What the windows for addresses have in common: rows of an address with a tick, and the CVs that will be
// written below them.
#pragma once

#include "ui/editor_dialog.h"
#include "workbench/write_plan.h"

class QCheckBox;
class QLabel;

namespace karvo
{

class FormRows;

class AddressWindow : public EditorDialog
{
    Q_OBJECT

public:
    // What is to be written, once the dialog was accepted.
    const WritePlan& plan() const { return plan_; }

protected:
    AddressWindow(const LanguageTables& texts, const char* name, Caption title, QWidget* parent);

    struct AddressRow {
        QLineEdit* address;
        QCheckBox* write;
    };

    // Each on the next free row of the window.
    void add(QWidget& wide);
    void addText(Caption caption);
    AddressRow addAddress(const char* field, const char* box, Caption caption);
    void addPlan();

    QCheckBox* checkBox(const char* name, Caption caption, bool checked);
    QPushButton& writing() { return *writing_; }

    // The lines of a plan, or words instead of them.
    void showLines(const WritePlan& plan);
    void showWords(const Text& words);

    // Closes the window with this plan.
    void finish(WritePlan plan);

    // After something was typed or ticked, and at the button.
    virtual void showPlan() = 0;
    virtual void write() = 0;

private:
    FormRows* rows_;
    QLabel* planned_;
    QPushButton* writing_;
    WritePlan plan_;
};

} // namespace karvo
