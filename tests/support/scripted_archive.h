// An archive and a web server that do what a test says.
#pragma once

#include "program/archive.h"
#include "program/downloader.h"

#include <functional>
#include <string>
#include <vector>

namespace karvo::test
{

struct ScriptedEntry {
    ArchiveEntry entry;
    std::vector<std::string> pieces;
};

class ScriptedArchive : public Archive
{
public:
    std::vector<ScriptedEntry> entries;
    std::optional<Text> fault; // behind the last entry
    std::filesystem::path read_;

    std::optional<Text> read(const std::filesystem::path& path, ArchiveSink& sink) override
    {
        read_ = path;
        for (const ScriptedEntry& entry : entries) {
            if (!sink.takeEntry(entry.entry))
                return std::nullopt;
            for (const std::string& piece : entry.pieces) {
                if (!sink.takeBytes(Bytes(piece.begin(), piece.end())))
                    return std::nullopt;
            }
        }
        return fault;
    }
};

class ScriptedDownloader : public Downloader
{
public:
    DownloadEnd end = DownloadEnd::complete;
    std::function<void(DownloadObserver&)> during;
    Text address;
    std::filesystem::path target;

    DownloadEnd fetch(const Text& from, const std::filesystem::path& to, DownloadObserver& observer) override
    {
        address = from;
        target = to;
        if (during)
            during(observer);
        return end;
    }
};

} // namespace karvo::test
