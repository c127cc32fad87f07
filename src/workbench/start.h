// What happens before the window is shown.
#pragma once

#include "workbench/workbench.h"

#include <optional>

namespace karvo
{

// Reads the five settings of section "Parameter" into the state and writes each back, so that all five exist
// from the first start on. Returns the stored language; nothing when none, or nonsense, is stored.
std::optional<LanguageCode> readSettings(ProgramState& state, Settings& settings);

} // namespace karvo
