// From the settings to the language in use: all that happens before the window is made.
#pragma once

#include "program/locale_info.h"
#include "workbench/workbench.h"

namespace karvo
{

// Reads the settings, asks for a language where none is stored, and loads it. False when the program ends
// instead; the person has been told why.
bool startUp(Workbench& bench, const LocaleInfo& locale);

} // namespace karvo
