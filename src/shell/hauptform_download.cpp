// New files for the user: the maker's archive, and what is in it.
#include "firmware/download.h"
#include "firmware/forms/transfer_progress.h"
#include "firmware/forms/unzip_dialog.h"
#include "program/path_text.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "ui/captions.h"
#include "workbench/line_use.h"

#include <QAction>

namespace karvo
{

void Hauptform::connectDownload()
{
    whenChosen("mnu_download", &Hauptform::downloadArchive);
    whenChosen("mnu_unzip", &Hauptform::unpackArchive);
}

// The line is held meanwhile, and until the person has read how it went: nothing else may wait.
void Hauptform::downloadArchive()
{
    {
        const LineUse line(bench_);
        if (!line.isGranted())
            return;
        const auto name = downloadFileName(texts_.message(Message::downloadAddress)).value_or(Text());
        TransferProgress progress(bench_, Caption::downloadTitle,
                                  filledCaption(texts_, Caption::downloadRunning, {name}), this);
        const auto end = download(bench_, downloader_, progress);
        progress.hide();
        if (end)
            tellDownload(bench_, *end);
    }
    if (closing_)
        close();
}

void Hauptform::unpackArchive()
{
    if (state_.lineBusy)
        return;
    if (const auto request = askForUnzip(bench_, this)) {
        const LineUse line(bench_);
        TransferProgress progress(
            bench_, Caption::unzipTitle,
            filledCaption(texts_, Caption::unzipRunning, {pathText(request->archive.filename())}), this);
        const auto result = unpack(bench_, archive_, *request, progress);
        progress.hide();
        tellUnpacked(bench_, *request, result);
    }
    if (closing_)
        close();
}

} // namespace karvo
