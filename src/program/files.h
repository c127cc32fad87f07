// Reading the files that come with the program or belong to the user.
#pragma once

#include "program/text.h"

#include <filesystem>
#include <optional>

namespace karvo
{

class Files
{
public:
    virtual ~Files() = default;

    // The whole file; nothing when it can not be opened, is no regular file, or is larger than `limit` bytes.
    virtual std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) = 0;

    virtual bool exists(const std::filesystem::path& path) = 0;
};

// No file that the program reads as text is larger; a larger one is not of this system.
inline constexpr std::size_t textFileLimit = std::size_t{4} * 1024 * 1024;

} // namespace karvo
