// An Intel-HEX file as the image that the boot loader is sent (docs/files.md, "Firmware files").
#pragma once

#include "firmware/file_fault.h"

#include <array>
#include <span>
#include <variant>
#include <vector>

namespace karvo
{

inline constexpr std::size_t flashPageSize = 128; // bytes

using FlashPage = std::array<std::uint8_t, flashPageSize>;

struct HexImage {
    Bytes data; // from address 0, without gaps

    // The last page is filled up with 0xFF, as erased flash reads.
    std::vector<FlashPage> pages() const;
};

// Checks the whole file; the first fault by line is the one that is told, faults of addresses after those of
// single lines.
std::variant<HexImage, FileRefusal> parseHexImage(std::span<const std::uint8_t> content);

} // namespace karvo
