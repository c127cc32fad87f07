#include "platform/new_file.h"

#include <algorithm>
#include <limits>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace karvo
{

namespace
{

std::error_code lastError()
{
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

std::error_code errorUnless(BOOL isDone)
{
    return isDone != FALSE ? std::error_code() : lastError();
}

// A file that another program has open can not be replaced: "access denied" is all that is told of it.
bool isInUse(const std::filesystem::path& path)
{
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(path.c_str(), DELETE, shareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return ::GetLastError() == ERROR_SHARING_VIOLATION;
    ::CloseHandle(file);
    return false;
}

HANDLE handleOf(std::intptr_t file)
{
    return reinterpret_cast<HANDLE>(file);
}

} // namespace

std::error_code NewFile::create(const std::filesystem::path& path)
{
    file_ = reinterpret_cast<std::intptr_t>(::CreateFileW(
        path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file_ == closed ? lastError() : std::error_code();
}

std::error_code NewFile::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto length = std::min<std::size_t>(bytes.size(), std::numeric_limits<DWORD>::max());
        DWORD written = 0;
        if (::WriteFile(handleOf(file_), bytes.data(), static_cast<DWORD>(length), &written, nullptr) ==
            FALSE)
            return lastError();
        bytes = bytes.subspan(written);
    }
    return {};
}

std::error_code NewFile::sync()
{
    ::FlushFileBuffers(handleOf(file_));
    return {};
}

std::error_code NewFile::close()
{
    if (file_ == closed)
        return {};
    const auto error = errorUnless(::CloseHandle(handleOf(file_)));
    file_ = closed;
    return error;
}

std::error_code replaceFile(const std::filesystem::path& newFile, const std::filesystem::path& oldFile)
{
    constexpr DWORD whole = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const auto error = errorUnless(::MoveFileExW(newFile.c_str(), oldFile.c_str(), whole));
    if (error == std::errc::permission_denied && isInUse(oldFile))
        return std::make_error_code(std::errc::device_or_resource_busy);
    return error;
}

} // namespace karvo
