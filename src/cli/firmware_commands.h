// The commands of karvo-cli that renew a decoder's firmware.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// Uploads a HEX file to the boot loader, and prints what its replies say. With --dry-run the file is checked,
// and what would be sent is printed.
ExitCode runFlash(Workbench& bench, const CliArguments& arguments);

// Updates through the programming interface. With --dry-run as above.
ExitCode runUpdate(Workbench& bench, const CliArguments& arguments);

// Unpacks an archive into a folder, as a whole or not at all.
ExitCode runUnzip(Workbench& bench, const CliArguments& arguments);

} // namespace karvo
