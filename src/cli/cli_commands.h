// The commands of karvo-cli, on whatever line they are given.
#pragma once

#include "cli/cli_arguments.h"
#include "cli/exit_code.h"
#include "cli/output.h"
#include "link/read.h"
#include "platform/interrupt_notice.h"
#include "platform/port_map.h"
#include "workbench/workbench.h"

namespace karvo
{

// What a command works with.
struct CommandRun {
    Workbench& bench;
    const PortMap& ports;
    const CliArguments& arguments;
    Output& output;
    InterruptNotice& interrupt; // ends all waits, unless the command has it do something else

    const LanguageTables& texts() const { return bench.state.texts; }
};

ExitCode exitCodeOf(ReadEnd end);

ExitCode runPorts(CommandRun& run);
ExitCode runIdentify(CommandRun& run);
ExitCode runRead(CommandRun& run);
ExitCode runList(CommandRun& run);

} // namespace karvo
