// What karvo-cli says of itself, in the language in use, made from the table of commands.
#pragma once

#include "cli/command_table.h"
#include "language/language_tables.h"

namespace karvo
{

// All commands with what they do, the options that go with every command, and where to read more. Several
// lines, as the next, without a line end behind the last.
Text generalHelp(const LanguageTables& texts);

// How a command is written, what it does, its options and its exit codes.
Text helpOf(const Command& command, const LanguageTables& texts);

// "karvo-cli set LIST.kvr... CV3=12...".
Text usageOf(const Command& command);

// "ports, identify, read": all commands.
Text commandWords();

} // namespace karvo
