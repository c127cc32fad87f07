// What bytes are checked by, and how they and their bits are written as digits.
#pragma once

#include "program/text.h"

#include <cstdint>
#include <optional>
#include <span>

namespace karvo
{

// The check byte of blocks and write frames: the sum of the bytes modulo 256 (docs/protocol.md, "The line").
std::uint8_t checkByte(std::span<const std::uint8_t> bytes);

// The binary digits of a value, for testing single bits of a CV. Most significant digit first, padded with
// "0" on the left to at least eight characters: 5 gives "00000101".
Text binaryText(unsigned value);

// 0 to 15, in either letter case.
std::optional<unsigned> hexDigit(char16_t character);

// Two hexadecimal digits a byte; nothing for an odd number of characters or any other character. Empty gives
// no bytes.
std::optional<Bytes> bytesFromHex(TextView digits);

// "1B"
Text hexPair(std::uint8_t byte);

// "1B 01 0E"
Text hexText(const Bytes& bytes);

} // namespace karvo
