// Which editor opens for the set on the bench, and why another does not. What each needs is data: a model
// that has the function, and a description that uses its CVs.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"

#include <optional>
#include <span>

namespace karvo
{

enum class Editor {
    addresses,
    braking,
    speedTable,
    baseAndTop, // CV2 and CV5 from a preset
    presets,    // speed steps and distances from files and into them
    bothServos,
    firstServo,
    secondServo,
    servoTimes,
    servoAddresses
};

struct CvRange {
    int first;
    int last;
};

// CVs that an editor leaves alone on other models than these, and where the description does not use them.
struct OptionalCvs {
    CvRange cvs;
    std::span<const Model> models;
};

struct EditorNeeds {
    std::span<const Model> models; // that have the function; empty: each has it
    std::span<const CvRange> cvs;  // without one of these it does not open
    std::span<const OptionalCvs> optional = {};
    bool wantsValues = false;   // the decoder is sent the values of the list at once
    bool opensUnlisted = false; // without a list it opens, and says itself what is missing
};

// "CV2, CV70-97"; ascending.
Text namesOfCvs(const std::vector<int>& cvs);

const EditorNeeds& needsOf(Editor editor);

// Nothing when it opens for this set. The model is that of the list, never that of the last identification:
// the list is what the person looks at, and what will be written.
std::optional<Text> whyNotOpen(const EditorNeeds& needs, const CvSet& set, const LanguageTables& texts);
std::optional<Text> whyNotOpen(Editor editor, const CvSet& set, const LanguageTables& texts);

// Whether an editor deals with one of its optional CVs in this set.
bool dealsWith(Editor editor, const CvSet& set, int cv);

} // namespace karvo
