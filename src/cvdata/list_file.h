// CV list files: the CVs of one vehicle in a file (layout in docs/files.md).
#pragma once

#include "cvdata/cv_set.h"
#include "cvdata/cv_table.h"
#include "cvdata/decoder_profile.h"

#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace karvo
{

// Something in a list file that is not as it should be, with its line (1 is the header line).
struct ListFault {
    enum class Kind {
        noRow,            // a line among the rows that has no CV number
        numberOutOfRange, // a CV number outside 1 to 256
        repeatedRow,      // a CV number that a line before has
        wrongValue,       // no number from 0 to 255: the CV is without a value
        noEnd,            // "Ende CV" is missing: the file may have been cut off
        noFileEnd,        // "Ende FS" is missing, though "Ende CV" is there: likewise
        unknownProcessor
    };
    Kind kind;
    int line;
    std::optional<int> number = std::nullopt; // the one that is out of range
};

struct ListFile {
    std::vector<Text> lines; // entry 1 is the header line; entry 0 is not used
    int rowCount = 0;        // lines between the header and what ends the rows
    CvTable table;
    std::optional<Processor> processor; // nothing when the file names none that is known
    Text unknownProcessor;              // the file's own word for it then; empty when it has none
    std::optional<int> firmwareVersion; // 1 to 255, from the trailer
    std::vector<ListFault> faults;

    const Text& header() const { return lines[1]; }
};

// Lines of a list file, the header included: as many as a description has at most, and what a list adds.
inline constexpr std::size_t listLineLimit = 600;

// Why a file is no list, with the line that shows it.
struct ListRefusal {
    enum class Kind { noRow, tooManyLines };
    Kind kind;
    int line;
    std::optional<int> number = std::nullopt; // the one that is out of range
};

// Refused as too long is also what would exceed the limit once it is saved, with the lines that it lacks.
// The row of a line is its first field. What is not understood is a fault; the rest is taken.
std::variant<ListFile, ListRefusal> parseListFile(std::span<const std::uint8_t> content);

// The list file of a set. Lines and fields of an opened list that were not understood stand where they stood,
// except rows beyond 256, which no decoder has.
Bytes listFileContent(const CvSet& set);

// The same, and the header line in memory becomes the one that is saved.
Bytes save_data(CvSet& set);

} // namespace karvo
