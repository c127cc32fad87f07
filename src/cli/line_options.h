// The line that the command line asks for: which devices stand behind the port numbers, and whether a
// simulated interface stands in for them.
#pragma once

#include "cli/cli_arguments.h"
#include "platform/port_map.h"
#include "program/serial_port.h"

#include <memory>
#include <variant>

namespace karvo
{

// Or what is wrong, in words.
std::variant<std::vector<PortMapping>, Text> portMappings(const CliArguments& arguments,
                                                          const LanguageTables& texts);

// A simulated interface that answers on port `number`; or what is wrong, with the names that there are.
std::variant<std::unique_ptr<SerialPort>, Text> simulatedLine(const CliArguments& arguments, int number,
                                                              const LanguageTables& texts);

} // namespace karvo
