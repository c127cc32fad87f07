// A file that is written under a temporary name in its own folder and takes its place when it is complete on
// disk. Until then, and for good if it never is, the old file stays as it is.
#pragma once

#include "platform/new_file.h"

namespace karvo
{

class SafeFile
{
public:
    // A link is followed: what it leads to is replaced.
    explicit SafeFile(const std::filesystem::path& target);
    ~SafeFile(); // removes what was not committed
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;

    // What other programs left in the folder is cleared on the way.
    std::error_code open();
    std::error_code write(std::span<const std::uint8_t> bytes) { return file_.write(bytes); }
    std::error_code commit();

private:
    std::filesystem::path target_;
    std::filesystem::path temporary_; // empty: there is none
    NewFile file_;
};

} // namespace karvo
