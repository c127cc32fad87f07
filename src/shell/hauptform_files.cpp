// Opening and saving lists in the main window, and what else is done with files.
#include "program/path_text.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"
#include "workbench/forms/more_cvs_dialog.h"
#include "workbench/forms/vehicle_printout.h"
#include "workbench/forms/vergleichen.h"
#include "workbench/list_files.h"

#include <QAction>

namespace karvo
{

void Hauptform::connectFiles()
{
    const auto on = [this](std::string_view item, auto act) { whenChosen(item, act); };
    on("mnu_open", &Hauptform::openSavedList);
    on("mnu_save", [this] { save(&saveList, "mnu_save"); });
    on("mnu_save_as", [this] { save(&saveListUnderNewName, "mnu_save_as"); });
    on("mnu_change_more_cv", [this] { Change_more_CV(bench_, this).exec(); });
    on("mnu_FzCVdrucken", [this] { FzCVdrucken(bench_, clock_, this).exec(); });
    on("mnu_vergleichen", [this] { Vergleichen(bench_, this).exec(); });
}

void Hauptform::openSavedList()
{
    readTimer_.stop();
    if (openChosenList(bench_, menu_->captionOf(texts_, "mnu_open")))
        showWithoutDecoder();
}

void Hauptform::save(bool (*saving)(Workbench&, const Text&), std::string_view item)
{
    if (!saving(bench_, menu_->captionOf(texts_, item)))
        return;
    bench_.view.showStatus(texts_.caption(Caption::fileSaved, {pathText(state_.set.listPath)}));
}

} // namespace karvo
