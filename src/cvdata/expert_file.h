// Expert files: what goes beyond the description of a CV, for those who know what they do (layout in
// docs/files.md).
#pragma once

#include "cvdata/cv_table.h"

#include <map>
#include <optional>
#include <span>
#include <vector>

namespace karvo
{

struct ExpertEntry {
    Text name;      // short, for the list
    Text knowledge; // for the CV's own side
};

struct ExpertFile {
    std::map<int, ExpertEntry> entries; // by CV number
    std::vector<int> faultyLines; // left out: no CV number from 1 to 256, or a number for the second time
};

// What the list says of an entry: the first sentence of what experts know, cut at a word where it is long;
// the name where nothing more is known.
Text expertLine(const ExpertEntry& entry);

// Nothing when no line speaks of a CV.
std::optional<ExpertFile> parseExpertFile(std::span<const std::uint8_t> content);

} // namespace karvo
