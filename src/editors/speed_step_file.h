// Speed-step tables as ".fcr" files (layout in docs/files.md).
#pragma once

#include "cvdata/cv_table.h"
#include "editors/speed_curves.h"

#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace karvo
{

struct SpeedStepRecord {
    int cv;    // 10 to 99
    int value; // 0 to 255
};

// Where the reading of a file broke off (line 1 is the header line).
struct SpeedStepFault {
    enum class Kind {
        wrongValue, // of a CV from 10 to 99: no number from 0 to 255
        tooLong     // a line behind the 28th
    };
    Kind kind;
    int line;
};

struct SpeedStepFile {
    std::vector<SpeedStepRecord> records; // those before the fault
    std::optional<SpeedStepFault> fault;
};

// Line 1 is ignored, as are lines without a CV number of two digits. Empty lines do not count.
SpeedStepFile parseSpeedStepFile(std::span<const std::uint8_t> content);

// CV97 down to CV70 with values and names of the table.
Bytes speedStepFileContent(const CvTable& table);

// A table that brings its own base and top speed: records for CV2 and CV5, then the 28 steps.
struct BasedSpeedTable {
    int base = 0; // CV2
    int top = 0;  // CV5
    SpeedTable steps{};
};

// The table, or the line that does not fit: each record has to stand in its place.
std::variant<BasedSpeedTable, int> parseBasedSpeedTable(std::span<const std::uint8_t> content);

} // namespace karvo
