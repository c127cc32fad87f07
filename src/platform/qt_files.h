#pragma once

#include "program/files.h"

namespace karvo
{

class QtFiles : public Files
{
public:
    std::optional<Bytes> readWhole(const std::filesystem::path& path, std::size_t limit) override;
    bool exists(const std::filesystem::path& path) override;
};

} // namespace karvo
