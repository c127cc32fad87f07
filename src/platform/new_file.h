// A file that nobody else knows yet.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>

namespace karvo
{

class NewFile
{
public:
    NewFile() = default;
    ~NewFile() { close(); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // An error where something of this name is there.
    std::error_code create(const std::filesystem::path& path);
    std::error_code write(std::span<const std::uint8_t> bytes);

    // Waits until the bytes are on the disk. Some file systems can not; the file is then as safe as they make
    // it.
    std::error_code sync();

    std::error_code close();

private:
    static constexpr std::intptr_t closed = -1;
    std::intptr_t file_ = closed; // the system's handle
};

// Lets a file take the place of another, which is gone with that; both stay on an error.
std::error_code replaceFile(const std::filesystem::path& newFile, const std::filesystem::path& oldFile);

} // namespace karvo
