// Unpacking a ZIP archive as a whole: nothing of it stands in the target folder before all of it is sound.
#pragma once

#include "language/language_tables.h"
#include "program/archive.h"
#include "program/files.h"
#include "program/work_observer.h"

#include <cstddef>
#include <filesystem>
#include <optional>

namespace karvo
{

struct UnzipLimits {
    std::size_t entries = 10'000;
    std::uint64_t bytes = std::uint64_t{1} << 30; // of all files together, as they really come
};

enum class UnzipEnd {
    unpacked,
    stopped,     // by the observer
    missing,     // there is no such file
    empty,       // a sound archive without a single entry
    notReadable, // no ZIP archive, cut off, or a sum is wrong
    nameRefused, // see archive_names.h, or a name for the second time, letter case aside
    linkRefused, // a link or a device
    encrypted,
    tooMany,
    tooLarge,
    notPlaced // the target folder could not be written; only then may some files have been replaced
};

struct UnzipResult {
    UnzipEnd end = UnzipEnd::unpacked;
    Text about;                 // the path or the name that it is about
    Text words;                 // the library's, with notReadable
    std::error_code error = {}; // with notPlaced
};

struct UnzipPlace {
    std::filesystem::path folder; // where the files go
    std::filesystem::path
        staging; // where they are unpacked on the way: on the same disk, nothing stands there
};

// The observer is told how many bytes are unpacked, and asked, after each piece. Files of the same name in
// the target folder are replaced. What was unpacked on the way is gone afterwards whatever happens.
UnzipResult unzip(Archive& archive, const std::filesystem::path& file, const UnzipPlace& place,
                  WorkObserver& observer, const UnzipLimits& limits = {});

// Nothing for a good end and for a stop.
std::optional<Text> messageOf(const UnzipResult& result, const LanguageTables& texts, const Files& files);

} // namespace karvo
