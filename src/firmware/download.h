// Fetching the maker's archive into "C:\temp".
#pragma once

#include "program/downloader.h"
#include "workbench/workbench.h"

#include <optional>

namespace karvo
{

// The last twelve characters of the address, where they can name a file on every system.
std::optional<Text> downloadFileName(TextView address);

// Fetches what message 581 names, with an hourglass meanwhile. Nothing, after a message, when that is no
// address of a file.
std::optional<DownloadEnd> download(Workbench& bench, Downloader& downloader, DownloadObserver& observer);

// Says how it went; nothing of what the person has cancelled.
void tellDownload(Workbench& bench, DownloadEnd end);

} // namespace karvo
