// What happens before the window is shown.
#pragma once

#include "workbench/workbench.h"

#include <optional>
#include <vector>

namespace karvo
{

// Reads the five settings of section "Parameter" into the state and writes each back, so that all five exist
// from the first start on. Returns the stored language; nothing when none, or nonsense, is stored. `present`:
// the ports at which a device is plugged in; the only one is taken where none is stored.
std::optional<LanguageCode> readSettings(ProgramState& state, Settings& settings,
                                         const std::vector<int>& present = {});

} // namespace karvo
