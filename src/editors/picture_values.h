// What the pictures of function sheets are given: the values of CVs, from wherever they stand, and words.
#pragma once

#include "language/language_tables.h"

#include <functional>
#include <optional>

namespace karvo
{

// Nothing for a CV that the model lacks.
using PictureValues = std::function<std::optional<int>(int cv)>;

inline bool hasBit(const PictureValues& values, int cv, int weight)
{
    return (values(cv).value_or(0) & weight) != 0;
}

// A switch that the model lacks does not hold anything back.
inline bool allowsBit(const PictureValues& values, int cv, int weight)
{
    return (values(cv).value_or(weight) & weight) != 0;
}

struct PictureWords {
    const LanguageTables& texts;
    bool decimalComma = false;
    // What the description in use calls a value of a CV; may be missing, then the number is shown.
    std::function<Text(int cv, int value)> valueWord{};
};

// "50 ms", "1.5 s", "2 min".
Text durationText(int milliseconds, bool decimalComma);

Text wordOf(const PictureWords& words, int cv, int value);

} // namespace karvo
