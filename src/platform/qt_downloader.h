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

// Takes only replies that tell their length: nothing else shows that one was cut off.
class QtDownloader : public Downloader
{
public:
    explicit QtDownloader(Wait& wait, const DownloadLimits& limits = {}) : wait_(wait), limits_(limits) {}

    DownloadEnd fetch(const Text& address, const std::filesystem::path& target,
                      DownloadObserver& observer) override;

private:
    Wait& wait_;
    const DownloadLimits limits_;
};

} // namespace karvo
