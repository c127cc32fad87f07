// The commands of karvo-cli that tell of settings in words.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// A function sheet with the values of a list; without a name, which sheets the list has.
ExitCode runSheet(CommandRun& run);

// All settings in force of a list.
ExitCode runDescribe(CommandRun& run);

} // namespace karvo
