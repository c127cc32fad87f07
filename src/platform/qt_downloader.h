#pragma once

#include "program/downloader.h"
#include "program/wait.h"

#include <chrono>

namespace karvo
{

struct DownloadLimits {
    std::chrono::milliseconds silence{30'000};       // without a byte
    std::chrono::milliseconds total{15 * 60 * 1000}; // from start to end
    long long bytes = 200LL * 1024 * 1024;
    int redirects = 5;
};

// Takes replies that are as long as told, and ZIP archives that have come up to their end record. Of a reply
// in chunks, or one that was packed for the way, the network library does not tell reliably whether it was
// cut off. A web page or nothing at all is no file.
class QtDownloader : public Downloader
{
public:
    explicit QtDownloader(Wait& wait, const DownloadLimits& limits = {}) : wait_(wait), limits_(limits) {}

    DownloadEnd fetch(const Text& address, const std::filesystem::path& target,
                      WorkObserver& observer) override;

private:
    Wait& wait_;
    const DownloadLimits limits_;
};

} // namespace karvo
