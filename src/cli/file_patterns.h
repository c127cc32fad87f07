// Names of several files at once, where the shell hands them on as they were typed.
#pragma once

#include "program/files.h"

#include <filesystem>
#include <vector>

namespace karvo
{

// The shells of Windows do: there no file has these letters in its name.
inline constexpr bool shellLeavesPatterns = std::filesystem::path::preferred_separator == '\\';

// The files that a word means, by name: "*" stands for any letters and "?" for one, in the file's name alone,
// not in its folder. Letter case does not count. What is no pattern, or one that no file matches, stays as it
// is.
std::vector<std::filesystem::path> filesMeant(Files& files, const std::filesystem::path& word);

} // namespace karvo
