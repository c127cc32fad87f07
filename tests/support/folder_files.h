// Files of a real folder, without any toolkit; what is written stays in memory.
#pragma once

#include "support/memory_files.h"

#include <fstream>
#include <iterator>

namespace karvo::test
{

class FolderFiles : public MemoryFiles
{
public:
    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override
    {
        std::ifstream stream(path, std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
        return stream && bytes.size() <= limit ? std::optional(bytes) : std::nullopt;
    }
    bool exists(const std::filesystem::path& path) override { return std::filesystem::exists(path); }
};

} // namespace karvo::test
