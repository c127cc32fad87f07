// The commands of karvo-cli that work on CV list files.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// Saves the set on the bench as the file's name says: a CV list (.kvr), CSV (.csv) or a text report (.txt). A
// file that is there is only replaced with the user's consent.
ExitCode saveToFile(Workbench& bench, const QString& file, const CliArguments& arguments);

ExitCode runExport(Workbench& bench, const CliArguments& arguments);
ExitCode runCompare(Workbench& bench, const CliArguments& arguments);
ExitCode runSet(Workbench& bench, const CliArguments& arguments);

} // namespace karvo
