// The check byte of blocks and write frames: the sum of the bytes modulo 256 (docs/protocol.md, "The line").
#pragma once

#include <cstdint>
#include <span>

namespace karvo
{

std::uint8_t checkByte(std::span<const std::uint8_t> bytes);

} // namespace karvo
