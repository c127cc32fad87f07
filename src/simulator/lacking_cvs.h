// Which CVs a simulated decoder lacks that the others of its kind have.
#pragma once

#include <span>
#include <string_view>

namespace karvo::sim
{

// They hold nothing. Empty for most decoders.
std::span<const int> lackingCvs(std::string_view decoder);

} // namespace karvo::sim
