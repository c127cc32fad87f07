// The commands of karvo-cli with their options and exit codes: one table from which arguments are checked,
// and all help is made.
#pragma once

#include "cli/cli_arguments.h"
#include "cli/exit_code.h"
#include "language/text_numbers.h"
#include "program/command_words.h"

#include <optional>
#include <span>
#include <string_view>

namespace karvo
{

struct CommandOption : OptionForm {
    Caption help;
};

struct CommandExit {
    ExitCode code;
    Caption help;
};

struct Command {
    CliCommand command;
    std::string_view word;
    std::string_view operands; // as in the help
    int leastOperands;
    int mostOperands;
    Caption help;
    std::span<const std::string_view> options; // those beside the ones that go with every command
    std::span<const CommandExit> exits;
    std::optional<Caption> note = std::nullopt; // what else its help says
};

std::span<const Command> commands();

// Nothing for a word that is no command.
const Command* commandOf(std::string_view word);
const Command& commandOf(CliCommand command);

// All options, those that go with every command among them.
std::span<const CommandOption> commandOptions();

bool isHeeded(const Command& command, std::string_view option);

// What an exit code means for this command; nothing where the command never ends so.
const CommandExit* exitOf(const Command& command, ExitCode code);

// Whether Ctrl-C lets it come to a clean end.
bool isInterruptible(const Command& command);

// The one of the words that is spelled most nearly so: at most two letters more, fewer, other or exchanged,
// and fewer than it has. Else empty.
std::string_view nearestWord(std::string_view word, std::span<const std::string_view> words);

} // namespace karvo
