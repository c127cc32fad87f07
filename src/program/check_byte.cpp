#include "program/check_byte.h"

#include <numeric>

namespace karvo
{

std::uint8_t checkByte(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0u) & 0xFFu);
}

} // namespace karvo
