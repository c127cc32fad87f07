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
    connect(menu_->action("mnu_download"), &QAction::triggered, this, &Hauptform::downloadArchive);
    connect(menu_->action("mnu_unzip"), &QAction::triggered, this, &Hauptform::unpackArchive);
}

void Hauptform::downloadArchive()
{
    const LineUse line(bench_); // nothing else may wait meanwhile
    if (!line.isGranted())
        return;
    const auto name = downloadFileName(texts_.message(Message::downloadAddress)).value_or(Text());
    std::optional<DownloadEnd> end;
    {
        TransferProgress progress(texts_, bench_.wait,
                                  filledCaption(texts_, Caption::downloadRunning, {name}), this);
        end = download(bench_, downloader_, progress);
    }
    if (end)
        tellDownload(bench_, *end);
    if (closing_)
        close();
}

void Hauptform::unpackArchive()
{
    if (state_.lineBusy)
        return;
    const auto request = askForUnzip(bench_, this);
    if (!request)
        return;
    const LineUse line(bench_);
    UnzipResult result;
    {
        const Text name = pathText(request->archive.filename());
        TransferProgress progress(texts_, bench_.wait, filledCaption(texts_, Caption::unzipRunning, {name}),
                                  this);
        result = unpack(bench_, archive_, *request, progress);
    }
    tellUnpacked(bench_, *request, result);
    if (closing_)
        close();
}

} // namespace karvo
