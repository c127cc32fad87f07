// The window of a function sheet, whatever it shows: a picture, and fields for CVs and their bits.
#pragma once

#include "editors/forms/sheet_field_row.h"
#include "editors/sheet_values.h"
#include "editors/sheet_view.h"
#include "ui/editor_dialog.h"

#include <vector>

class QComboBox;
class QGridLayout;
class QPlainTextEdit;

namespace karvo
{

class Picture;

class FunctionSheetForm : public EditorDialog
{
    Q_OBJECT

public:
    // `item`: the menu item, without "mnu_", that opened it; one of a preset fills its values in.
    FunctionSheetForm(Workbench& bench, const SheetView& view, std::string_view item,
                      QWidget* parent = nullptr);

    // What is to be done, once it was accepted.
    enum class End {
        takeOver, // its values go into the list
        write,    // they are written
        addresses // the address window is to open; nothing is taken
    };
    End end() const { return end_; }
    const SheetValues& values() const { return values_; }

    // Whose values it holds, 0 being the first; nothing for values of one's own.
    std::optional<std::size_t> variant() const { return values_.filledWith(view_.variants); }

protected:
    bool holdsWork() const override { return values_.asText() != opened_; }

private:
    void build();
    void addParts();
    void addMenus();
    QWidget* choices();
    QComboBox* addChoice(QLayout& line, const char* name, Caption label,
                         std::span<const SheetViewValues> sets, bool areVariants);
    void addFields(QVBoxLayout& layout);
    void addPicture(QVBoxLayout& layout);
    void addSection(const SheetViewSection& section, QGridLayout& grid, QWidget* parent);
    void addRow(const SheetViewField& field, QGridLayout& grid, QWidget* parent);
    void addButtons();

    void setBack();
    void copyValues();
    void pasteValues();
    void animate(bool wanted);
    void openAddresses();
    void finish(End end);
    void showValues();

    Workbench& bench_;
    const SheetView view_;
    std::string item_;
    SheetValues values_;
    Text opened_; // the values that it opened with
    End end_ = End::takeOver;
    std::vector<SheetFieldRow*> rows_;
    Picture* picture_ = nullptr;
    QComboBox* variants_ = nullptr;
    QComboBox* readyMade_ = nullptr;
    QPlainTextEdit* help_;
};

} // namespace karvo
