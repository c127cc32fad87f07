// The command of karvo-cli that writes to the decoder.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// With changes: reads the decoder, holds each value against its limits and writes it. With a CV list file:
// writes what differs from the decoder. Prints a line for each CV. When a value is beyond its limits nothing
// is written.
ExitCode runWrite(Workbench& bench, const CliArguments& arguments);

} // namespace karvo
