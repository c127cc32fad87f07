// How a vehicle keeps its distance: four CVs, checked, as a plan of what to write, and as ".bcr" files
// (layout in docs/files.md).
#pragma once

#include "cvdata/cv_table.h"
#include "language/language_tables.h"
#include "workbench/write_plan.h"

#include <array>
#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace karvo
{

struct DistanceCv {
    int cv;
    int lowest;
    int highest;
    Message refused; // the message for a value outside the range; the one of the range follows
    Message range;
    TextView fileText; // behind the value in a file, with its separator where it has one
};

// CV48, 52, 53 and 54: the order of files and of writing, and of the values below.
inline constexpr std::size_t distanceCvCount = 4;
std::span<const DistanceCv, distanceCvCount> distanceCvs();

// As a person types them; empty where there is none.
using DistanceValues = std::array<Text, distanceCvCount>;

DistanceValues distanceValuesOf(const CvTable& table);

// The message for a value outside its range; nothing for one inside.
std::optional<Text> refusalOf(const DistanceCv& cv, TextView typed, const LanguageTables& texts);

// What is to be written; or the place of the first value outside its range.
std::variant<WritePlan, std::size_t> planOfDistances(const DistanceValues& values);

struct DistanceFile {
    DistanceValues values;        // empty where the file has none
    std::vector<int> faultyLines; // of one of the four CVs, without a value from 0 to 255 between separators

    // The line to be told: the first faulty one, or the first of a file without any value.
    std::optional<int> firstFault() const;
};

// Line 1 and lines of other CVs are ignored; of two lines for a CV the second counts.
DistanceFile parseDistanceFile(std::span<const std::uint8_t> content);

// `listLines`: of the set on the bench. From its line "Ende CV" to the first empty one they end the file;
// without one the line "Ende CV" alone does.
Bytes distanceFileContent(const DistanceValues& values, std::span<const Text> listLines);

// As the presets of the main window are saved: another header, and nothing behind the four records.
Bytes distancePresetContent(const DistanceValues& values);

} // namespace karvo
