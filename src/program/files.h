// The files that come with the program or belong to the user.
#pragma once

#include "program/clock.h"
#include "program/text.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace karvo
{

struct FolderEntry {
    std::filesystem::path name; // without the folder
    bool isFolder;
};

class Files
{
public:
    virtual ~Files() = default;

    // The whole file; nothing when it can not be opened, is no regular file, or is larger than `limit` bytes.
    virtual std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) = 0;

    virtual bool exists(const std::filesystem::path& path) = 0;

    // How many bytes a regular file has; 0 for what is none or can not be asked.
    virtual std::uintmax_t sizeOf(const std::filesystem::path& path) = 0;

    // Puts a whole file in the place of the old one, which stays as it is until the new one is complete on
    // disk. On an error nothing has changed. Refuses what is no regular file.
    virtual std::error_code saveAtomically(const std::filesystem::path& path, const Bytes& content) = 0;

    // A name in the folder that nobody has, for what is to be moved to its place when it is complete. It
    // tells program and process; what ended processes left in the folder under such names is cleared.
    virtual std::filesystem::path temporaryPath(const std::filesystem::path& folder) = 0;

    // When a file was written last; nothing when there is none.
    virtual std::optional<DateTime> changedAt(const std::filesystem::path& path) = 0;

    // With the folders above it; one that exists is a success.
    virtual std::error_code makeFolder(const std::filesystem::path& folder) = 0;

    // Whether files can be made in the folder; false for one that is not there.
    virtual bool canWriteInto(const std::filesystem::path& folder) = 0;

    // What lies in a folder, by name; empty when it can not be read.
    virtual std::vector<FolderEntry> list(const std::filesystem::path& folder) = 0;

    // A file that is not there is a success.
    virtual std::error_code remove(const std::filesystem::path& path) = 0;

    // What the system says to an error, in its own language, without a full stop.
    virtual Text systemWords(const std::error_code& error) const = 0;
};

inline constexpr std::size_t megabyte = std::size_t{1024} * 1024;

// No file that the program reads as text is larger; a larger one is not of this system.
inline constexpr std::size_t textFileLimit = 4 * megabyte;

} // namespace karvo
