// The commands of karvo-cli, on whatever line they are given.
#pragma once

#include "cli/cli_arguments.h"
#include "link/read.h"
#include "platform/port_map.h"
#include "workbench/workbench.h"

namespace karvo
{

enum class ExitCode {
    done = 0,
    listsDiffer = 1, // of a comparison, as the next
    cannotCompare = 2,
    fileTrouble = 1,
    wrongArguments = 2,
    portRefused = 3,
    noReply = 4,
    unknownDecoder = 5,
    damagedData = 6,
    notAllWritten = 7
};

ExitCode exitCodeOf(ReadEnd end);

ExitCode runPorts(Workbench& bench, const PortMap& map, const CliArguments& arguments);
ExitCode runIdentify(Workbench& bench, const CliArguments& arguments);
ExitCode runRead(Workbench& bench, const CliArguments& arguments);
ExitCode runList(Workbench& bench, const CliArguments& arguments);

} // namespace karvo
