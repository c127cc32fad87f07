// New files for the user: the maker's archive, and what is in it.
#include "firmware/download.h"
#include "firmware/forms/download_done.h"
#include "firmware/forms/transfer_progress.h"
#include "firmware/forms/unzip_dialog.h"
#include "program/path_text.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "ui/captions.h"
#include "workbench/line_use.h"

#include <QAction>
#include <QDesktopServices>
#include <QUrl>

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
    auto next = DownloadDone::Next::nothing;
    std::filesystem::path file;
    {
        const LineUse line(bench_);
        if (!line.isGranted())
            return;
        const auto name = downloadFileName(texts_.message(Message::downloadAddress)).value_or(Text());
        TransferProgress progress(bench_, Caption::downloadTitle,
                                  filledCaption(texts_, Caption::downloadRunning, {name}), this);
        const auto done = download(bench_, downloader_, progress);
        progress.end();
        if (done && done->end == DownloadEnd::failed)
            tellDownloadFailed(bench_);
        if (done && done->end == DownloadEnd::complete) {
            file = done->file;
            next = DownloadDone(texts_, file, this).ask();
        }
    }
    if (closing_)
        close();
    else if (next == DownloadDone::Next::openFolder)
        QDesktopServices::openUrl(QUrl::fromLocalFile(qtText(pathText(file.parent_path()))));
    else if (next == DownloadDone::Next::unpack)
        unpackAfter(confirmUnzip(bench_, file, this));
}

void Hauptform::unpackArchive()
{
    if (!state_.lineBusy)
        unpackAfter(askForUnzip(bench_, this));
}

void Hauptform::unpackAfter(const std::optional<UnzipRequest>& request)
{
    if (request) {
        const LineUse line(bench_);
        TransferProgress progress(
            bench_, Caption::unzipTitle,
            filledCaption(texts_, Caption::unzipRunning, {pathText(request->archive.filename())}), this);
        const auto result = unpack(bench_, archive_, *request, progress);
        progress.end();
        tellUnpacked(bench_, *request, result);
    }
    if (closing_)
        close();
}

} // namespace karvo
