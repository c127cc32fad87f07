// The battery voltage that a KV07 or KV08 measures when it is read.
#pragma once

#include "cvdata/decoder_profile.h"

#include <optional>
#include <span>

namespace karvo
{

// In units of 20 mV, as CV153 has it. Nothing where the model does not measure, or the block does not say.
std::optional<int> measuredBattery(const DecoderProfile& profile, std::span<const std::uint8_t> block);

// "3,92" or "3.92": so many units as volts.
Text voltsText(int units, bool decimalComma);

} // namespace karvo
