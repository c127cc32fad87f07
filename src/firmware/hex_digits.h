// Pairs of hexadecimal digits, in the firmware files and where bytes are shown.
#pragma once

#include "program/text.h"

#include <cstdint>
#include <optional>

namespace karvo
{

// 0 to 15, in either letter case.
std::optional<unsigned> hexDigit(char16_t character);

// Two digits a byte; nothing for an odd number of characters or any other character. Empty gives no bytes.
std::optional<Bytes> bytesFromHex(TextView digits);

// "1B 01 0E"
Text hexText(const Bytes& bytes);

} // namespace karvo
