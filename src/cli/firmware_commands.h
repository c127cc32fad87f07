// The commands of karvo-cli that renew a decoder's firmware.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// Uploads a HEX file to the boot loader, and prints what its replies say; Ctrl-C ends it between two
// messages. With --dry-run the file is checked, and what would be sent is printed.
ExitCode runFlash(CommandRun& run);

// Updates through the programming interface. With --dry-run as above. Once records are being sent the first
// Ctrl-C only warns, for what it would leave behind is a decoder without firmware; the next one ends it.
ExitCode runUpdate(CommandRun& run);

// Unpacks an archive into a folder, as a whole or not at all.
ExitCode runUnzip(CommandRun& run);

} // namespace karvo
