#pragma once

#include "program/archive.h"

namespace karvo
{

// By libarchive. Takes ZIP files with a directory at their end only: one that was cut off has none.
class ZipArchive : public Archive
{
public:
    std::optional<Text> read(const std::filesystem::path& path, ArchiveSink& sink) override;
};

} // namespace karvo
