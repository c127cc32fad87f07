#include "platform/new_file.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace karvo
{

namespace
{

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

} // namespace

std::error_code NewFile::create(const std::filesystem::path& path)
{
    constexpr mode_t everybodyAsFarAsUsual = 0666;
    file_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everybodyAsFarAsUsual);
    return file_ == closed ? lastError() : std::error_code();
}

std::error_code NewFile::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto written = ::write(static_cast<int>(file_), bytes.data(), bytes.size());
        if (written >= 0)
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return lastError();
    }
    return {};
}

std::error_code NewFile::sync()
{
    if (::fsync(static_cast<int>(file_)) == 0 || (errno != EIO && errno != ENOSPC))
        return {};
    return lastError();
}

std::error_code NewFile::close()
{
    if (file_ == closed)
        return {};
    const bool isDone = ::close(static_cast<int>(file_)) == 0;
    file_ = closed;
    return isDone ? std::error_code() : lastError();
}

std::error_code replaceFile(const std::filesystem::path& newFile, const std::filesystem::path& oldFile)
{
    std::error_code error;
    std::filesystem::rename(newFile, oldFile, error);
    return error;
}

} // namespace karvo
