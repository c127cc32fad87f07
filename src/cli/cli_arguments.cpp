#include "cli/cli_arguments.h"

#include <QCommandLineParser>
#include <QHash>

namespace karvo
{

namespace
{

const char* const exitCodes =
    "Exit codes: 0 done, 1 a file could not be read, 2 wrong arguments, 3 the port could not be "
    "opened, 4 no reply, 5 unknown decoder, 6 the data arrived damaged.";

const char* const commandHelp =
    "ports      the ports that are there\n"
    "identify   which decoder stands on the programming interface\n"
    "read       read all CVs and print the list\n"
    "list MODEL print a model's list without a decoder; without MODEL the models' names";

std::optional<CliCommand> commandOf(const QString& word)
{
    const QHash<QString, CliCommand> commands = {{QStringLiteral("ports"), CliCommand::ports},
                                                 {QStringLiteral("identify"), CliCommand::identify},
                                                 {QStringLiteral("read"), CliCommand::read},
                                                 {QStringLiteral("list"), CliCommand::list}};
    const auto found = commands.constFind(word);
    return found == commands.constEnd() ? std::nullopt : std::optional<CliCommand>(*found);
}

// "COM5" or "5"; nothing outside 1 to 31.
std::optional<int> portOf(const QString& word)
{
    const QString digits = word.startsWith(QLatin1String("COM"), Qt::CaseInsensitive) ? word.mid(3) : word;
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    return isNumber && number >= 1 && number <= 31 ? std::optional<int>(number) : std::nullopt;
}

QCommandLineOption valued(const char* name, const char* description, const char* value)
{
    return {QLatin1String(name), QLatin1String(description), QLatin1String(value)};
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral("Reads the decoders of Karvo vehicles.\n") +
                                     QLatin1String(exitCodes));
    parser.addPositionalArgument(QStringLiteral("command"), QLatin1String(commandHelp),
                                 QStringLiteral("ports|identify|read|list [MODEL]"));
    parser.addOption(valued("port", "Port of the programming interface; else the stored one.", "COM5"));
    parser.addOption(
        valued("map-port", "Device of a port for this run; may be repeated.", "COM5=/dev/ttyUSB0"));
    parser.addOption(valued("simulate", "A simulated interface with this decoder on it.", "MODEL"));
    parser.addOption(valued("fault", "What goes wrong on the simulated line.", "NAME"));
    parser.addOption({QStringLiteral("no-pace"), QStringLiteral("The simulated line takes no time.")});
    parser.addOption(valued("language", "de, nl, en, es or fr; else the stored one.", "CODE"));
    parser.addOption(valued("program-folder", "Where the program's text files lie.", "DIR"));
    parser.addOption({QStringLiteral("expert"), QStringLiteral("Show expert knowledge below its CVs.")});
    parser.addOption({QStringLiteral("json"), QStringLiteral("Print JSON.")});
    parser.addOption({QStringLiteral("help"), QStringLiteral("Print this help.")});
    parser.addOption({QStringLiteral("version"), QStringLiteral("Print the version.")});
}

CliParseResult wrong(const QString& text)
{
    return {std::nullopt, text, true};
}

CliParseResult taken(const QCommandLineParser& parser, CliCommand command)
{
    CliArguments arguments;
    arguments.command = command;
    arguments.model = parser.positionalArguments().value(1);
    arguments.portMappings = parser.values(QStringLiteral("map-port"));
    arguments.simulatedDecoder = parser.value(QStringLiteral("simulate"));
    arguments.fault = parser.value(QStringLiteral("fault"));
    arguments.unpaced = parser.isSet(QStringLiteral("no-pace"));
    arguments.language = parser.value(QStringLiteral("language"));
    arguments.programFolder = parser.value(QStringLiteral("program-folder"));
    arguments.expert = parser.isSet(QStringLiteral("expert"));
    arguments.json = parser.isSet(QStringLiteral("json"));
    if (parser.isSet(QStringLiteral("port"))) {
        arguments.port = portOf(parser.value(QStringLiteral("port")));
        if (!arguments.port)
            return wrong(QStringLiteral("--port takes COM1 to COM31."));
    }
    return {arguments, {}, false};
}

} // namespace

CliParseResult parseCliArguments(const QStringList& words)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(words))
        return wrong(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return {std::nullopt, parser.helpText(), false};
    if (parser.isSet(QStringLiteral("version")))
        return {std::nullopt, QStringLiteral("karvo-cli " KARVO_VERSION "\n"), false};
    const QStringList positional = parser.positionalArguments();
    const auto command = positional.isEmpty() ? std::nullopt : commandOf(positional.first());
    if (!command)
        return wrong(QStringLiteral("A command is needed: ports, identify, read or list."));
    if (positional.size() > (*command == CliCommand::list ? 2 : 1))
        return wrong(QStringLiteral("Too many arguments: %1").arg(positional.last()));
    return taken(parser, *command);
}

} // namespace karvo
