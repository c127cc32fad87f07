// The lines of an Intel-HEX file, whatever it is a file of.
#pragma once

#include "firmware/file_fault.h"
#include "program/text_lines.h"

#include <variant>

namespace karvo
{

enum class HexRecordType : std::uint8_t { data, end, segment, segmentStart, linear, linearStart };

struct HexRecord {
    std::size_t address; // 0 to 65,535, as the line has it
    HexRecordType type;
    Bytes data;
};

// Without the blanks, and the end mark of old editors, that may stand behind a line.
TextView withoutTrail(TextView line);

// A line without its trail; lineForm, lineLength, lineSum, or lineType for a type above `linearStart`.
std::variant<HexRecord, FileFault> hexRecordOf(TextView line);

// Behind the end record there may be empty lines, and nothing else.
std::optional<FileRefusal> refusalBehindEnd(LineReader& reader);

// ":020000000102FB", for up to 255 bytes.
Text hexRecordLine(const HexRecord& record);

} // namespace karvo
