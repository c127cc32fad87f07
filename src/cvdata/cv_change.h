// A value for a CV, and how it is written as text: "CV102=30".
#pragma once

#include "program/text.h"

#include <optional>
#include <span>
#include <vector>

namespace karvo
{

struct CvChange {
    int cv;    // 1 to 256
    int value; // 0 to 255

    bool operator==(const CvChange&) const = default;
};

// "CV102=30" or "102=30", in capitals or not. Nothing for anything else; the numbers may be beyond those of a
// CV.
std::optional<CvChange> changeFromText(TextView word);

// Separated by blanks or line breaks, each CV once and within the numbers of CVs and values; nothing for
// anything else, and where there is none.
std::optional<std::vector<CvChange>> changesFromText(TextView text);

// "CV102=30 CV103=10"
Text textOfChanges(std::span<const CvChange> changes);

} // namespace karvo
