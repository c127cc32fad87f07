// What was asked for on the command line.
#pragma once

#include "cvdata/batch_change.h"
#include "language/language_tables.h"
#include "program/command_words.h"
#include "program/prompts.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <set>
#include <vector>

namespace karvo
{

enum class CliCommand {
    ports,
    identify,
    read,
    list,
    exportList,
    compare,
    set,
    write,
    sheet,
    describe,
    flash,
    update,
    unzip
};

struct CliArguments {
    CliCommand command = CliCommand::read;
    QStringList operands;          // what stands behind the command, without the changes
    std::vector<CvChange> changes; // of the commands `set` and `write`
    QString from;                  // the CV list file to write or to show; empty: write `changes`
    QString output;                // where to save what was read; empty: print it
    bool yes = false;              // usual questions are answered with yes
    std::set<QuestionKind> forced; // and so are these
    bool dryRun = false;           // show what would be changed, change nothing
    std::optional<int> port;       // 1 to 31
    QStringList portMappings;      // as typed
    QString simulatedDecoder;      // empty: the real line
    QString fault;                 // of the simulated line; empty: none
    bool unpaced = false;          // the simulated line takes no time
    QString language;              // as typed; empty: the stored one
    QString programFolder;         // empty: the executable's folder
    bool expert = false;           // show expert knowledge too
    std::optional<int> variant;    // of a bus or fire-engine list, 0 to 3; nothing: the first
    bool json = false;
};

struct CliParseResult {
    std::optional<CliArguments> arguments; // nothing: print `text` and leave
    Text text;                             // help, version, or what is wrong
    bool wrong = false;                    // `text` tells what is wrong
};

// The words behind the program's name. They are split before they are understood: the language and the
// program folder are needed to say what is wrong with them.
CommandWords cliWords(const std::vector<std::string>& words);

CliParseResult parseCliArguments(const CommandWords& words, const LanguageTables& texts);

} // namespace karvo
