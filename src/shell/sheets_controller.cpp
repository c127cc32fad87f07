#include "shell/sheets_controller.h"

#include "editors/forms/function_sheet_form.h"
#include "editors/forms/settings_page.h"
#include "shell/editors_controller.h"
#include "shell/main_menu.h"
#include "shell/menu_tree.h"
#include "shell/write_controller.h"
#include "ui/captions.h"

#include <QAction>

#include <algorithm>

namespace karvo
{

SheetsController::SheetsController(Workbench& bench, QWidget& window, const SheetStore& sheets,
                                   MainMenu& menu, WriteController& writing, EditorsController& editors)
    : bench_(bench), window_(window), sheets_(sheets), menu_(menu), writing_(writing), editors_(editors)
{
}

void SheetsController::open(const MenuEntry& row)
{
    openSheet(std::string(row.itemName()));
}

void SheetsController::openOwn(const std::string& item)
{
    openSheet(item);
}

// Anew behind the address window, and where the line was taken before what it holds was in the list.
void SheetsController::openSheet(const std::string& item)
{
    const FunctionSheet* const sheet = sheets_.sheetOf(item);
    const ProgramState& state = bench_.state;
    bool again = sheet != nullptr;
    while (again && !whyNotOpen(*sheet, state.set, state.texts)) {
        const SheetView view = viewOf(*sheet, state.set, state.texts, state.language);
        FunctionSheetForm form(bench_, view, item, &window_);
        again = false;
        while (form.exec() == QDialog::Accepted && !again && !carryOut(form, view.title))
            again = form.end() == FunctionSheetForm::End::addresses;
        if (again)
            editors_.editAddresses();
    }
}

// False: the sheet is to open again.
bool SheetsController::carryOut(const FunctionSheetForm& sheet, const Text& title)
{
    using End = FunctionSheetForm::End;
    if (sheet.end() == End::addresses)
        return false;
    if (const auto variant = sheet.variant())
        bench_.state.automaticVariant = static_cast<int>(*variant);
    return sheet.end() == End::write ? write(sheet, title)
                                     : takeIntoList(bench_, sheet.values().changes()).has_value();
}

// What the list holds otherwise than vehicle and sheet is taken into it too.
bool SheetsController::write(const FunctionSheetForm& sheet, const Text& title)
{
    const LanguageTables& texts = bench_.state.texts;
    const WritePlan plan = sheet.values().plan(bench_.state.set);
    auto changes = sheet.values().changes();
    std::erase_if(changes, [&](const CvChange& change) {
        return std::any_of(plan.begin(), plan.end(),
                           [&](const PlannedWrite& write) { return write.cv == change.cv; });
    });
    if (!takeIntoList(bench_, changes))
        return false;
    if (!plan.empty())
        return writing_.writeEdited(plan, texts.message(Message::sheetWritten, {title}));
    bench_.prompts.message(texts.message(Message::sheetNothingToWrite), PromptIcon::information);
    return true;
}

void SheetsController::describe(const MenuEntry& row)
{
    const ProgramState& state = bench_.state;
    const std::string name(row.itemName());
    const QString title = qtText(state.texts.menuCaption(row.caption));
    for (bool again = true; again;) {
        SettingsPage page(state.texts, bench_.prompts, name.c_str(), title,
                          describeSettings(state.set, sheets_, state.texts, state.language), &window_);
        again = page.exec() == QDialog::Accepted && !state.set.isEmpty();
        if (again)
            openChosen(page.chosen());
    }
}

void SheetsController::openChosen(const std::string& item)
{
    if (sheets_.sheetOf(item) != nullptr) {
        openSheet(item);
        return;
    }
    const MenuEntry* const entry = menuEntry("mnu_" + item);
    if (entry == nullptr)
        return;
    QAction* const action = menu_.action(entry->name);
    if (action->isEnabled())
        action->trigger();
    else
        bench_.prompts.message(textFromUtf8(action->statusTip().toStdString()), PromptIcon::information);
}

} // namespace karvo
