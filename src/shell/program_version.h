// What the program calls itself, and what it calls itself over an offline list.
#pragma once

#include "program/text.h"

namespace karvo
{

inline constexpr TextView programVersion = u"V01_23";
inline constexpr TextView offlineListVersion = u"V01_22";

} // namespace karvo
