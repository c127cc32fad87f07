#include "shell/download_controller.h"

#include "firmware/download.h"
#include "firmware/forms/download_done.h"
#include "firmware/forms/transfer_progress.h"
#include "firmware/forms/unzip_dialog.h"
#include "program/path_text.h"
#include "shell/operation.h"
#include "ui/captions.h"
#include "workbench/line_use.h"

#include <QDesktopServices>
#include <QUrl>

namespace karvo
{

DownloadController::DownloadController(Workbench& bench, QWidget& window, Operations& operations,
                                       Archive& archive, Downloader& downloader)
    : bench_(bench),
      texts_(bench.state.texts),
      window_(window),
      operations_(operations),
      archive_(archive),
      downloader_(downloader)
{
}

// The line is held meanwhile, and until the person has read how it went: nothing else may wait.
void DownloadController::downloadArchive()
{
    const Operation operation(operations_, OperationKind::other);
    auto next = DownloadDone::Next::nothing;
    std::filesystem::path file;
    {
        const LineUse line(bench_);
        if (!line.isGranted())
            return;
        const auto name = downloadFileName(texts_.message(Message::downloadAddress)).value_or(Text());
        TransferProgress progress(bench_, TransferProgress::Work::waits, Caption::downloadTitle,
                                  filledCaption(texts_, Caption::downloadRunning, {name}), &window_);
        const auto done = download(bench_, downloader_, progress);
        progress.end();
        if (done && done->end == DownloadEnd::failed)
            tellDownloadFailed(bench_.prompts);
        if (done && done->end == DownloadEnd::complete) {
            file = done->file;
            next = DownloadDone(texts_, file, &window_).ask();
        }
    }
    if (operations_.isClosing())
        return;
    if (next == DownloadDone::Next::openFolder)
        QDesktopServices::openUrl(QUrl::fromLocalFile(qtText(pathText(file.parent_path()))));
    else if (next == DownloadDone::Next::unpack)
        unpackAfter(confirmUnzip(bench_, file, &window_));
}

void DownloadController::unpackArchive()
{
    if (!bench_.state.lineBusy)
        unpackAfter(askForUnzip(bench_, &window_));
}

void DownloadController::unpackAfter(const std::optional<UnzipRequest>& request)
{
    if (!request)
        return;
    const Operation operation(operations_, OperationKind::other);
    const LineUse line(bench_);
    TransferProgress progress(
        bench_, TransferProgress::Work::waitsForNothing, Caption::unzipTitle,
        filledCaption(texts_, Caption::unzipRunning, {pathText(request->archive.filename())}), &window_);
    const auto result = unpack(bench_.view, bench_.files, archive_, *request, progress);
    progress.end();
    tellUnpacked(bench_, *request, result);
}

} // namespace karvo
