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

struct UpdateFile {
    std::vector<Text> header; // 1 to 6 items, without "Update Ende"
    Bytes start;              // two bytes, from the first item of the header
    std::vector<UpdateRecord> records;
};

// Checks the whole file.
std::variant<UpdateFile, FileRefusal> parseUpdateFile(std::span<const std::uint8_t> content);

} // namespace karvo
