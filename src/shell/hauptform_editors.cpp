// The editors of vehicle functions in the main window.
#include "editors/forms/bremsen.h"
#include "editors/forms/dcc_adresse.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "workbench/write_many.h"

#include <QAction>

namespace karvo
{

void Hauptform::connectEditors()
{
    const auto on = [this](std::string_view item, auto handler) {
        connect(menu_->action(item), &QAction::triggered, this, handler);
    };
    on("mnu_dcc_adresse", &Hauptform::editAddresses);
    on("mnu_bremsen", [this] { editBraking({}); });
    on("mnu_Faller", [this] { editBraking("Faller.bcr"); });
    on("mnu_CI46", [this] { editBraking("CI_46.bcr"); });
    on("mnu_CI26", [this] { editBraking("CI_26.bcr"); });
}

void Hauptform::editAddresses()
{
    if (!takePendingValue())
        return;
    DCC_Adresse editor(state_.set.table, bench_.prompts, texts_, this);
    if (editor.exec() == QDialog::Accepted)
        writeEdited(editor.plan(), Message::addressesWritten);
}

void Hauptform::editBraking(std::string_view preset)
{
    if (!takePendingValue())
        return;
    Bremsen editor(bench_, preset, this);
    if (editor.exec() == QDialog::Accepted)
        writeEdited(editor.plan(), Message::distancesWritten);
}

// Success is claimed only when each CV was written; else the report tells what was and what was not.
void Hauptform::writeEdited(const WritePlan& plan, Message done)
{
    operate([&] {
        const auto report = writeValues(bench_, plan, keepBackup_);
        if (report.end == WriteManyEnd::finished && report.isClean())
            bench_.prompts.message(texts_.message(done), PromptIcon::information);
        else
            showReport(report);
    });
}

} // namespace karvo
