// What the program calls itself.
#pragma once

#include "program/text.h"

namespace karvo
{

// The project's version in the form "V01_23".
extern const TextView programVersion;

// Over an offline list; it stays, whatever the program's own becomes.
inline constexpr TextView offlineListVersion = u"V01_22";

} // namespace karvo
