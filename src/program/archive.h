// Reading archives: their entries, one after the other.
#pragma once

#include "program/text.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace karvo
{

struct ArchiveEntry {
    enum class Kind { file, folder, other }; // a link or a device is an other
    std::string name;                        // UTF-8, as it stands in the archive
    Kind kind = Kind::file;
    bool encrypted = false;
};

// Takes what is read. False ends the reading.
class ArchiveSink
{
public:
    virtual ~ArchiveSink() = default;
    virtual bool takeEntry(const ArchiveEntry& entry) = 0;
    // The next bytes of the entry.
    virtual bool takeBytes(std::span<const std::uint8_t> bytes) = 0;
};

class Archive
{
public:
    virtual ~Archive() = default;

    // Reads a ZIP file from its first entry to its last. Nothing when it is whole, sums included, or when the
    // sink ended it; else what is wrong, in the system's or the library's words.
    virtual std::optional<Text> read(const std::filesystem::path& path, ArchiveSink& sink) = 0;
};

} // namespace karvo
