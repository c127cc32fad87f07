// Fetching the maker's archive into "C:\temp".
#pragma once

#include "program/downloader.h"
#include "workbench/workbench.h"

#include <optional>

namespace karvo
{

// The last twelve characters of the address, where they can name a file on every system.
std::optional<Text> downloadFileName(TextView address);

struct Downloaded {
    DownloadEnd end;
    std::filesystem::path file; // where it is, or would be
};

// Fetches what message 581 names, with an hourglass meanwhile. Nothing, after a message, when that is no
// address of a file.
std::optional<Downloaded> download(Workbench& bench, Downloader& downloader, WorkObserver& observer);

void tellDownloadFailed(Prompts& prompts);

// That it went well, and behind that the place of the file.
Text downloadedText(const LanguageTables& texts, const std::filesystem::path& file);

} // namespace karvo
