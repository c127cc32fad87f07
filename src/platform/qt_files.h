#pragma once

#include "program/files.h"

namespace karvo
{

class QtFiles : public Files
{
public:
    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override;
    bool exists(const std::filesystem::path& path) override;
    std::uintmax_t sizeOf(const std::filesystem::path& path) override;
    std::error_code saveAtomically(const std::filesystem::path& path, const Bytes& content) override;
    std::filesystem::path temporaryPath(const std::filesystem::path& folder) override;
    std::optional<DateTime> changedAt(const std::filesystem::path& path) override;
    std::error_code makeFolder(const std::filesystem::path& folder) override;
    bool canWriteInto(const std::filesystem::path& folder) override;
    std::vector<FolderEntry> list(const std::filesystem::path& folder) override;
    std::error_code remove(const std::filesystem::path& path) override;
    Text systemWords(const std::error_code& error) const override;
};

} // namespace karvo
