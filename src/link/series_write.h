// The series of CV167 to CV171, which belong together: kind and numbers of a vehicle.
#pragma once

#include "link/write.h"

#include <array>

namespace karvo
{

inline constexpr int firstSeriesCv = 167;
inline constexpr int lastSeriesCv = 171;
inline constexpr std::size_t seriesLength = lastSeriesCv - firstSeriesCv + 1;

// Writes the five values in order, with a pause after each and without a notice of success. A failure is
// shown, and the next CV follows. After the end of the program nothing more is sent; what was not sent is
// `ended`.
std::array<WriteEnd, seriesLength> writeSeries(Link& link, const std::array<int, seriesLength>& values,
                                               const Text& onlyFor);

} // namespace karvo
