// Searching the main list by word.
#pragma once

#include "cvdata/main_list.h"

#include <optional>

namespace karvo
{

// The next line behind `after` (from the top without it, and again from the top after the last) whose label,
// name, explanations or bit texts hold the word, in any letter case. Nothing when no line does, or for an
// empty word.
std::optional<std::size_t> nextLineWith(const MainList& list, const CvTable& table, TextView word,
                                        std::optional<std::size_t> after);

} // namespace karvo
