// Two CV sets side by side.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"

#include <optional>
#include <vector>

namespace karvo
{

struct ListFile;

// One of the two sets. The tables are not copied: they must outlive the comparison's making.
struct CvSide {
    Text name; // what it is called in the result
    const CvTable* table;
    std::optional<Processor> processor; // nothing when it is not known
    bool isVehicle = false;             // its values were read from a decoder
};

// A set on the bench: read, opened or offline.
CvSide sideOf(const CvSet& set, const Text& name);
CvSide sideOf(const ListFile& file, const Text& name);

enum class Likeness { equal, different, onlyFirst, onlySecond };

struct ComparisonLine {
    int cv;
    Text label;
    Text firstValue; // "---" where the side has none
    Text secondValue;
    Likeness likeness;
    Text name; // what the CV is called

    // Label and values, the values separated by a tab.
    Text text() const { return label + firstValue + u"\t" + secondValue; }
};

struct Comparison {
    Text firstName;
    Text secondName;
    std::vector<ComparisonLine> lines;
    int equal = 0;
    int different = 0;
    int onlyFirst = 0;
    int onlySecond = 0;

    bool isEqual() const { return different + onlyFirst + onlySecond == 0; }
};

// CVs as CVs only, or the 28 speed steps as such, where CV70 stands.
enum class SpeedSteps { asRows, asSteps };

// Receivers have no speed table.
SpeedSteps speedStepsOf(Model model);

// Every CV that at least one side describes. `words`: the description that gives the lines their names.
Comparison compare(const CvSide& first, const CvSide& second, const CvTable& words, SpeedSteps steps);

// Decoders with different processors are not compared: three lines that say so. Nothing when both are the
// same or one is not known. The second side is a list file.
std::optional<Text> comparisonRefusal(const CvSide& first, const CvSide& second, const LanguageTables& texts);

// "CV1 = ", without padding.
Text comparedCvLabel(int cv);

// "  1  (CV97) = " to "  28  (CV70) = "; from 14 to 20 with a single blank before the bracket.
Text comparedStepLabel(int step);

// The word that marks a line.
Text likenessText(Likeness likeness, const LanguageTables& texts);

// "170 equal, 3 different, ...".
Text countsText(const Comparison& comparison, const LanguageTables& texts);

// The result as lines of a text file, each with its word and the CV's name behind it.
std::vector<Text> comparisonReport(const Comparison& comparison, const LanguageTables& texts);

// The result for other programs.
Bytes comparisonCsv(const Comparison& comparison, const LanguageTables& texts);

// Looks up a CV ("CV29") or all CVs with a value ("128"): the heading, a blank and what was found, a line
// each. Nothing for an empty answer.
std::optional<Text> lookedUpValues(const CvTable& table, TextView answer, const LanguageTables& texts);

} // namespace karvo
