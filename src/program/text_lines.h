// The lines of the text files that the program reads.
#pragma once

#include "program/text.h"

#include <optional>
#include <span>
#include <vector>

namespace karvo
{

// Installed files are Windows-1252. What a modern editor has written as UTF-8, with or without its mark, is
// recognised by its bytes, line by line, for lines are copied from one file into another; characters beyond
// Windows-1252 stay as they are.
Text decodedTextFile(std::span<const std::uint8_t> content);

// The lines of a file, one after the other, without their line ends: CR LF, or LF alone. A last line without
// an end counts; a final line end does not open a further line. What was read is not kept: a large file that
// is refused early costs little.
class LineReader
{
public:
    explicit LineReader(std::span<const std::uint8_t> content);

    // Nothing behind the last line.
    std::optional<Text> next();

    // Of the line that next() returned last, from 1; 0 before the first.
    int number() const { return number_; }

private:
    std::span<const std::uint8_t> rest_;
    int number_ = 0;
};

// All of them.
std::vector<Text> linesOf(std::span<const std::uint8_t> content);

// A text as a file: Windows-1252. A text that Windows-1252 lacks, or that would be taken for UTF-8 when it is
// read again, is written as UTF-8 with its mark, so that nothing of it is lost.
Bytes encodedTextFile(TextView text);

// Each line with CR LF behind it, as a file.
Bytes contentOfLines(std::span<const Text> lines);

} // namespace karvo
