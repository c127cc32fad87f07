#include "firmware/memory_image.h"

#include "link/identification.h"

#include <algorithm>

namespace karvo
{

void MemoryImage::set(std::size_t address, std::uint8_t value)
{
    bytes_.resize(std::max(bytes_.size(), address + 1));
    bytes_[address] = value;
}

std::size_t MemoryImage::countOfKnown() const
{
    return static_cast<std::size_t>(
        std::count_if(bytes_.begin(), bytes_.end(), [](const auto& byte) { return byte.has_value(); }));
}

MemoryImage imageOfBlock(const DecoderBlock& block)
{
    const auto lastCv = blockReplyLength(block.profile.typeCode) - 1; // without the check byte
    MemoryImage image;
    for (std::size_t cv = 1; cv <= lastCv; ++cv)
        image.set(cv - 1, block.image[cv]);
    return image;
}

MemoryImage imageOfValues(const CvTable& table)
{
    MemoryImage image;
    for (const int cv : table.describedCvs()) {
        const auto value = table.value(cv);
        if (isCvValue(value))
            image.set(addressOfCv(cv), static_cast<std::uint8_t>(*value));
    }
    return image;
}

} // namespace karvo
