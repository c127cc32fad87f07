// The commands of karvo-cli that work on CV list files.
#pragma once

#include "cli/cli_commands.h"

namespace karvo
{

// Saves the set on the bench as the file's name says: a CV list (.kvr), CSV (.csv) or a text report (.txt). A
// file that is there is only replaced with the user's consent.
ExitCode saveToFile(CommandRun& run, const QString& file);

ExitCode runExport(CommandRun& run);
ExitCode runCompare(CommandRun& run);
ExitCode runSet(CommandRun& run);

} // namespace karvo
