// From the settings to the language in use: all that happens before the window is made.
#pragma once

#include "program/locale_info.h"
#include "workbench/workbench.h"

#include <optional>
#include <vector>

namespace karvo
{

struct StartChoices {
    std::optional<LanguageCode> language; // asked for on the command line; is stored
    std::vector<int> presentPorts;        // at which a device is plugged in
};

// Reads the settings, asks for a language where none is stored, and loads it. False when the program ends
// instead; the person has been told why. Settings that can not be stored are told.
bool startUp(Workbench& bench, const LocaleInfo& locale, const StartChoices& choices = {});

} // namespace karvo
