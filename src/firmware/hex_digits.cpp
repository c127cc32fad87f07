#include "firmware/hex_digits.h"

namespace karvo
{

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

Text hexText(const Bytes& bytes)
{
    constexpr TextView digits = u"0123456789ABCDEF";
    Text text;
    for (const auto byte : bytes) {
        if (!text.empty())
            text += u' ';
        text += digits[byte / 16U];
        text += digits[byte % 16U];
    }
    return text;
}

} // namespace karvo
