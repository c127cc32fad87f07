// What is typed beside the list and nothing has taken yet.
#pragma once

#include "cvdata/cv_set.h"

namespace karvo
{

// The fields of the current CV; nothing for a field that shows what it should.
struct TypedEntry {
    std::optional<Text> number;
    std::optional<Text> value; // of the CV with the number above, else of the current one

    bool isEmpty() const { return !number && !value; }
};

// Whether a typed number is none: empty or 0.
bool isNoNumber(TextView typed);

// The CV that is meant by a typed number; 0 for one that the list lacks.
int cvOfNumber(const CvSet& set, TextView typed);

// Whether all of it is complete and allowed.
bool canBeTaken(const CvSet& set, const TypedEntry& entry);

} // namespace karvo
