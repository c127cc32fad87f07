// The command of karvo-cli that writes to the decoder.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// With changes: reads the decoder and writes the values; those that the description does not provide for are
// asked about first. With a CV list file: writes what differs from the decoder, without such values. Prints a
// line for each CV. A dry run reads, prints what would be written, and writes nothing. Ctrl-C ends the write
// between two CVs.
ExitCode runWrite(CommandRun& run);

} // namespace karvo
