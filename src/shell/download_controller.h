// New files for the user: the maker's archive, and what is in it.
#pragma once

#include "program/archive.h"
#include "program/downloader.h"
#include "workbench/workbench.h"

#include <QObject>

#include <optional>

namespace karvo
{

class Operations;
struct UnzipRequest;

class DownloadController : public QObject
{
public:
    DownloadController(Workbench& bench, QWidget& window, Operations& operations, Archive& archive,
                       Downloader& downloader);

    void downloadArchive();
    void unpackArchive();

private:
    void unpackAfter(const std::optional<UnzipRequest>& request);

    Workbench& bench_;
    const LanguageTables& texts_;
    QWidget& window_;
    Operations& operations_;
    Archive& archive_;
    Downloader& downloader_;
};

} // namespace karvo
