// Files of a real folder, without any toolkit.
#pragma once

#include "support/read_only_files.h"

#include <fstream>
#include <iterator>

namespace karvo::test
{

class FolderFiles : public ReadOnlyFiles
{
public:
    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override
    {
        std::ifstream stream(path, std::ios::binary);
        if (!stream)
            return std::nullopt;
        const std::string content{std::istreambuf_iterator<char>(stream), {}};
        if (content.size() > limit)
            return std::nullopt;
        return Bytes(content.begin(), content.end());
    }
    bool exists(const std::filesystem::path& path) override { return std::filesystem::exists(path); }
};

} // namespace karvo::test
