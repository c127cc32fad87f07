// A decoder's memory as it is shown and kept in files: CV n is the byte at address n - 1.
#pragma once

#include "cvdata/cv_table.h"
#include "workbench/workbench.h"

#include <optional>
#include <vector>

namespace karvo
{

inline constexpr std::size_t memorySize = 1024; // bytes; no decoder has more

constexpr std::size_t addressOfCv(int cv)
{
    return static_cast<std::size_t>(cv - 1);
}

constexpr int cvAtAddress(std::size_t address)
{
    return static_cast<int>(address) + 1;
}

// May have holes: bytes that nobody knows.
class MemoryImage
{
public:
    // Nothing for a hole and behind the end.
    std::optional<std::uint8_t> at(std::size_t address) const
    {
        return address < bytes_.size() ? bytes_[address] : std::nullopt;
    }

    // `address` below `memorySize`.
    void set(std::size_t address, std::uint8_t value);

    // The address behind the last byte that is known; 0 when none is.
    std::size_t size() const { return bytes_.size(); }

    std::size_t countOfKnown() const;

private:
    std::vector<std::optional<std::uint8_t>> bytes_;
};

// The 512 or 1,024 bytes that came.
MemoryImage imageOfBlock(const DecoderBlock& block);

// The values of a list, up to CV256; a CV without one is a hole.
MemoryImage imageOfValues(const CvTable& table);

} // namespace karvo
