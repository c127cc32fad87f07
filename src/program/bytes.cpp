#include "program/bytes.h"

#include <algorithm>
#include <numeric>

namespace karvo
{

std::uint8_t checkByte(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0u) & 0xFFu);
}

Text binaryText(unsigned value)
{
    Text digits;
    for (; value != 0; value /= 2)
        digits += value % 2 != 0 ? u'1' : u'0';
    digits.append(digits.size() < 8 ? 8 - digits.size() : 0, u'0');
    std::reverse(digits.begin(), digits.end());
    return digits;
}

std::optional<unsigned> hexDigit(char16_t character)
{
    if (character >= u'0' && character <= u'9')
        return static_cast<unsigned>(character - u'0');
    if (character >= u'A' && character <= u'F')
        return static_cast<unsigned>(character - u'A') + 10U;
    if (character >= u'a' && character <= u'f')
        return static_cast<unsigned>(character - u'a') + 10U;
    return std::nullopt;
}

std::optional<Bytes> bytesFromHex(TextView digits)
{
    if (digits.size() % 2 != 0)
        return std::nullopt;
    Bytes bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const auto high = hexDigit(digits[i]);
        const auto low = hexDigit(digits[i + 1]);
        if (!high || !low)
            return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(*high * 16U + *low));
    }
    return bytes;
}

Text hexPair(std::uint8_t byte)
{
    constexpr TextView digits = u"0123456789ABCDEF";
    return {digits[byte / 16U], digits[byte % 16U]};
}

Text hexText(const Bytes& bytes)
{
    Text text;
    for (const auto byte : bytes) {
        if (!text.empty())
            text += u' ';
        text += hexPair(byte);
    }
    return text;
}

} // namespace karvo
