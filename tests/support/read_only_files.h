// Files of which nothing can be changed.
#pragma once

#include "program/files.h"

namespace karvo::test
{

class ReadOnlyFiles : public Files
{
public:
    std::uintmax_t sizeOf(const std::filesystem::path&) override { return 0; }
    std::optional<Text> saveAtomically(const std::filesystem::path&, const Bytes&) override
    {
        return refusal;
    }
    std::filesystem::path temporaryPath(const std::filesystem::path& folder) override { return folder; }
    std::optional<DateTime> changedAt(const std::filesystem::path&) override { return std::nullopt; }
    std::optional<Text> makeFolder(const std::filesystem::path&) override { return refusal; }
    bool canWriteInto(const std::filesystem::path&) override { return false; }
    std::vector<FolderEntry> list(const std::filesystem::path&) override { return {}; }
    std::optional<Text> remove(const std::filesystem::path&) override { return refusal; }

private:
    const Text refusal = u"read-only";
};

} // namespace karvo::test
