// What was asked for on the command line.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace karvo
{

enum class CliCommand { ports, identify, read, list };

struct CliArguments {
    CliCommand command = CliCommand::read;
    QString model;            // of the command `list`; empty: print the names of the lists
    std::optional<int> port;  // 1 to 31
    QStringList portMappings; // as typed
    QString simulatedDecoder; // empty: the real line
    QString fault;            // of the simulated line; empty: none
    bool unpaced = false;     // the simulated line takes no time
    QString language;         // as typed; empty: the stored one
    QString programFolder;    // empty: the executable's folder
    bool expert = false;      // show expert knowledge too
    bool json = false;
};

struct CliParseResult {
    std::optional<CliArguments> arguments; // nothing: print `text` and leave
    QString text;                          // help, version, or what is wrong
    bool wrong = false;                    // `text` tells what is wrong
};

CliParseResult parseCliArguments(const QStringList& arguments);

} // namespace karvo
