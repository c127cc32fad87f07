// Searching the main list by word.
#pragma once

#include "cvdata/main_list.h"

#include <optional>

namespace karvo
{

// A line, and the CV for which it was found: one of those that the line stands for, or 0.
struct ListHit {
    std::size_t row;
    int cv;

    bool operator==(const ListHit&) const = default;
};

// The next CV behind `after` (from the top without it, and again from the top after the last) whose label,
// name, explanations or bit texts hold the word, in any letter case. Nothing when none does, or for an empty
// word.
std::optional<ListHit> nextHit(const MainList& list, const CvTable& table, TextView word,
                               std::optional<ListHit> after);

} // namespace karvo
