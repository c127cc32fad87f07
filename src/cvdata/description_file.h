// Description files: what each CV of a model means (layout in docs/files.md).
#pragma once

#include "cvdata/cv_table.h"
#include "program/text.h"

#include <span>
#include <vector>

namespace karvo
{

// Something in a description file that was left out, with the line it stands in (1 is the header line).
struct DescriptionFault {
    enum class Kind {
        tooManyLines,
        rowBeyondTable,
        wrongRow, // empty, no CV number, or that of a line before
        tooManyFields,
        wrongValue, // no number from 0 to 255; the CV is left without one
        noEnd       // nothing ends the rows: the file may have been cut off
    };
    Kind kind;
    int line;
};

struct Description {
    // Entry 1 is the header line, entry k + 1 the source line of row k; entry 0 is not used. At most 551
    // entries.
    std::vector<Text> lines;
    int rowCount = 0; // rows before the speed-step section
    CvTable table;
    std::vector<DescriptionFault> faults;

    const Text& header() const { return lines[1]; }
};

inline constexpr std::size_t descriptionLineLimit = 551;

// The line with which the speed-step section of a description begins; nothing from here on is a row.
inline constexpr TextView speedStepSectionStart = u"Anfang FS";

// The line that ends the rows of a CV list file.
inline constexpr TextView cvSectionEnd = u"Ende CV";

// Nothing when not a single line describes a CV: then it is no description file. Lines that have moved are
// found by their CV number. An empty line, one without a number from 1 to 256, one that describes a CV for
// the second time, fields beyond the table's and a value that no CV can have are faults of the file; the rest
// is kept.
std::optional<Description> parseDescription(std::span<const std::uint8_t> content);

} // namespace karvo
