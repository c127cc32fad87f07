// The editors of vehicle functions in the main window.
#include "editors/forms/dcc_adresse.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "workbench/write_many.h"

#include <QAction>

namespace karvo
{

void Hauptform::connectEditors()
{
    connect(menu_->action("mnu_dcc_adresse"), &QAction::triggered, this, &Hauptform::editAddresses);
}

void Hauptform::editAddresses()
{
    if (!takePendingValue())
        return;
    DCC_Adresse editor(state_.set.table, bench_.prompts, texts_, this);
    if (editor.exec() == QDialog::Accepted)
        writeEdited(editor.plan(), Message::addressesWritten);
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
