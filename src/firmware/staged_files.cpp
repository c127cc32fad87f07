#include "firmware/staged_files.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace karvo
{

namespace
{

namespace fs = std::filesystem;

std::optional<PlaceFault> faultOf(const fs::path& path, const std::error_code& error)
{
    return error ? std::optional(PlaceFault{path, error}) : std::nullopt;
}

// A stream keeps no error of its own; the system's last one is what stopped it.
PlaceFault streamFault(const fs::path& path)
{
    const int number = errno;
    return {path, number != 0 ? std::error_code(number, std::generic_category())
                              : std::make_error_code(std::errc::io_error)};
}

} // namespace

StagedFiles::StagedFiles(fs::path folder, fs::path staging)
    : folder_(std::move(folder)), staging_(std::move(staging))
{
}

StagedFiles::~StagedFiles()
{
    stream_.close();
    std::error_code ignored;
    if (begun_)
        fs::remove_all(staging_, ignored);
}

std::optional<PlaceFault> StagedFiles::begin()
{
    std::error_code error;
    fs::create_directories(folder_, error);
    if (error)
        return faultOf(folder_, error);
    begun_ = fs::create_directory(staging_, error);
    if (!begun_ && !error)
        error = std::make_error_code(std::errc::file_exists);
    return faultOf(staging_, error);
}

// To make and remove one takes the system far longer than to remember it.
void StagedFiles::addFolder(const fs::path& path)
{
    if (!path.empty() && folders_.insert(path).second)
        addFolder(path.parent_path());
}

std::optional<PlaceFault> StagedFiles::stageFolder(const fs::path& path)
{
    std::error_code error;
    if (stagedFolders_.insert(path).second)
        fs::create_directories(staging_ / path, error);
    return faultOf(folder_ / path, error);
}

std::optional<PlaceFault> StagedFiles::startFile(const fs::path& path)
{
    addFolder(path.parent_path());
    if (auto fault = stageFolder(path.parent_path()))
        return fault;
    current_ = path;
    errno = 0;
    stream_.open(staging_ / path, std::ios::binary | std::ios::trunc);
    if (!stream_)
        return streamFault(folder_ / path);
    files_.push_back(path);
    return std::nullopt;
}

std::optional<PlaceFault> StagedFiles::append(std::span<const std::uint8_t> bytes)
{
    errno = 0;
    stream_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return stream_ ? std::nullopt : std::optional(streamFault(folder_ / current_));
}

std::optional<PlaceFault> StagedFiles::finishFile()
{
    if (!stream_.is_open())
        return std::nullopt;
    errno = 0;
    stream_.close();
    return stream_ ? std::nullopt : std::optional(streamFault(folder_ / current_));
}

std::optional<PlaceFault> StagedFiles::place()
{
    for (const auto& path : folders_) {
        if (auto fault = checkPlace(path, true))
            return fault;
    }
    for (const auto& path : files_) {
        if (auto fault = checkPlace(path, false))
            return fault;
    }
    std::error_code error;
    for (const auto& path : folders_) {
        fs::create_directory(folder_ / path, error);
        if (error)
            return faultOf(folder_ / path, error);
    }
    for (const auto& path : files_) {
        fs::rename(staging_ / path, folder_ / path, error);
        if (error)
            return faultOf(folder_ / path, error);
    }
    return std::nullopt;
}

std::optional<PlaceFault> StagedFiles::checkPlace(const fs::path& path, bool isFolder) const
{
    std::error_code unknown;
    const auto status = fs::symlink_status(folder_ / path, unknown);
    if (!fs::exists(status))
        return std::nullopt;
    if (isFolder ? fs::is_directory(status) : fs::is_regular_file(status))
        return std::nullopt;
    return PlaceFault{folder_ / path,
                      std::make_error_code(isFolder ? std::errc::not_a_directory : std::errc::file_exists)};
}

} // namespace karvo
