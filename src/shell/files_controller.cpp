#include "shell/files_controller.h"

#include "program/path_text.h"
#include "shell/bench_display.h"
#include "shell/entry_controller.h"
#include "shell/menu_tree.h"
#include "shell/read_controller.h"
#include "workbench/forms/more_cvs_dialog.h"
#include "workbench/forms/vehicle_printout.h"
#include "workbench/forms/vergleichen.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo
{

FilesController::FilesController(Workbench& bench, QWidget& window, BenchDisplay& display,
                                 EntryController& entry, ReadController& reading, const Clock& clock)
    : bench_(bench),
      texts_(bench.state.texts),
      window_(window),
      display_(display),
      entry_(entry),
      reading_(reading),
      clock_(clock)
{
}

void FilesController::open(const MenuEntry& item)
{
    reading_.readNoMore();
    if (openChosenList(bench_, texts_.menuCaption(item.caption)))
        showWithoutDecoder();
}

void FilesController::save(const MenuEntry& item)
{
    if (saveList(bench_, texts_.menuCaption(item.caption)))
        showSaved();
}

void FilesController::saveAs(const MenuEntry& item)
{
    if (saveListUnderNewName(bench_, texts_.menuCaption(item.caption)))
        showSaved();
}

void FilesController::showOffline(const MenuEntry& item)
{
    if (!confirmOfflineList(bench_) || !mayReplaceSet(bench_))
        return;
    reading_.readNoMore();
    if (showChosenOfflineList(bench_, item.name))
        showWithoutDecoder();
}

void FilesController::showStandard()
{
    if (mayReplaceSet(bench_) && showStandardList(bench_))
        showWithoutDecoder();
}

void FilesController::changeMoreCvs()
{
    Change_more_CV(bench_, &window_).exec();
}

void FilesController::print()
{
    FzCVdrucken(bench_, clock_, &window_).exec();
}

void FilesController::compare()
{
    Vergleichen(bench_, &window_).exec();
}

void FilesController::exit()
{
    window_.close();
}

void FilesController::showWithoutDecoder()
{
    display_.applyCaptions();
    bench_.view.showStatus(texts_.caption(Caption::offlineList));
    entry_.focusList();
}

void FilesController::showSaved()
{
    bench_.view.showStatus(texts_.caption(Caption::fileSaved, {pathText(bench_.state.set.listPath)}));
}

} // namespace karvo
