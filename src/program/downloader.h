// Fetching a file from a web server.
#pragma once

#include "program/text.h"
#include "program/work_observer.h"

#include <chrono>
#include <filesystem>

namespace karvo
{

enum class DownloadEnd {
    complete,
    failed,    // the file at the target is what it was
    cancelled, // by the observer; likewise
    ended      // the program is being closed; likewise
};

class Downloader
{
public:
    virtual ~Downloader() = default;

    // Replaces the target when the file has come whole. The address has to be one of the web.
    virtual DownloadEnd fetch(const Text& address, const std::filesystem::path& target,
                              WorkObserver& observer) = 0;
};

} // namespace karvo
