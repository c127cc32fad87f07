// An update file "*.uhx" for the programming interface (docs/files.md, "Firmware files").
#pragma once

#include "firmware/file_fault.h"

#include <array>
#include <span>
#include <variant>
#include <vector>

namespace karvo
{

inline constexpr std::size_t updateRecordSize = 16; // bytes

// A short line is filled up with 0xFF.
using UpdateRecord = std::array<std::uint8_t, updateRecordSize>;

struct HeaderItem {
    Text text;
    int line; // from 1
};

struct UpdateFile {
    std::vector<HeaderItem> header; // 1 to 6 items, without "Update Ende"
    Bytes start;                    // two bytes, from the first item of the header
    std::vector<UpdateRecord> records;
    int firstRecordLine = 0;     // each record stands on a line of its own, one behind the other
    std::vector<int> shortLines; // with fewer than sixteen bytes, without the last line
    bool lineEndMissing = false; // behind the last line: the only sign that a file was cut off there
};

// Checks the whole file.
std::variant<UpdateFile, FileRefusal> parseUpdateFile(std::span<const std::uint8_t> content);

} // namespace karvo
