#include "cvdata/battery.h"

namespace karvo
{

std::optional<int> measuredBattery(const DecoderProfile& profile, std::span<const std::uint8_t> block)
{
    constexpr std::size_t position = 505; // counted from 1
    const bool measures = profile.model == Model::kv07 || profile.model == Model::kv08;
    if (!measures || block.size() < position || block[position - 1] == 0)
        return std::nullopt;
    return block[position - 1];
}

Text voltsText(int units, bool decimalComma)
{
    constexpr int millivoltsOfAUnit = 20;
    const int hundredths = units * millivoltsOfAUnit / 10;
    const Text decimals = textFromNumber(100 + hundredths % 100).substr(1);
    return textFromNumber(hundredths / 100) + (decimalComma ? u"," : u".") + decimals;
}

} // namespace karvo
