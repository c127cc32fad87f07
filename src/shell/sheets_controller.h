// The function sheets, and the pages that tell all settings in words, opened from the main window.
#pragma once

#include "editors/sheet_store.h"
#include "workbench/workbench.h"

#include <string>

class QWidget;

namespace karvo
{

class EditorsController;
class FunctionSheetForm;
class MainMenu;
struct MenuEntry;
class WriteController;

class SheetsController
{
public:
    SheetsController(Workbench& bench, QWidget& window, const SheetStore& sheets, MainMenu& menu,
                     WriteController& writing, EditorsController& editors);

    // The sheet of the item, or the one that a preset fills in.
    void open(const MenuEntry& row);
    void openOwn(const std::string& item);

    // All settings of the list in words.
    void describe(const MenuEntry& row);

private:
    void openSheet(const std::string& item);
    bool carryOut(const FunctionSheetForm& sheet, const Text& title);
    bool write(const FunctionSheetForm& sheet, const Text& title);
    void openChosen(const std::string& item);

    Workbench& bench_;
    QWidget& window_;
    const SheetStore& sheets_;
    MainMenu& menu_;
    WriteController& writing_;
    EditorsController& editors_;
};

} // namespace karvo
