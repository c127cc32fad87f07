#include "cli/cli_arguments.h"

#include "cvdata/description_choice.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace karvo
{

namespace
{

const char* const exitCodes =
    "Exit codes: 0 done, 1 a file could not be read, 2 wrong arguments, 3 the port could not be "
    "opened, 4 no reply, 5 unknown decoder, 6 the data arrived damaged, 7 refused or only partly written. "
    "compare: 0 equal, 1 different, 2 trouble. "
    "flash: 0 the loader accepted every page, 1 the file is damaged, 4 not one reply came, 7 something was "
    "refused, "
    "unanswered or cut off: repeat it. "
    "update: 0 the interface acknowledged every record, 1 the file is damaged, 4 no reply, and nothing was "
    "changed, "
    "5 no KV07, KV08 or receiver, 7 declined, not confirmed or broken off: but for a declined question the "
    "decoder's "
    "firmware may be incomplete. "
    "unzip: 0 all was unpacked, 1 there is no such archive, 6 it is damaged, empty or refused, 7 the folder "
    "could not "
    "be written; but for a 7 nothing was unpacked.";

const char* const commandHelp =
    "ports      the ports that are there\n"
    "identify   which decoder stands on the programming interface\n"
    "read       read all CVs and print the list\n"
    "list MODEL print a model's list without a decoder; without MODEL the models' names\n"
    "export     save a CV list file as CSV or as a text report: export BUS.kvr BUS.csv\n"
    "compare    what differs between two CV list files: compare A.kvr B.kvr\n"
    "set        change CVs in CV list files: set A.kvr B.kvr CV3=12 CV4=8\n"
    "write      write CVs to the decoder: write CV3=12 CV4=8; with --from what differs from a CV list\n"
    "           file. What the decoder held is kept in the folder CV_listen first. Values beyond their\n"
    "           limits are asked about, those of a list left out; --force limits writes both.\n"
    "flash      send a firmware to the decoder's boot loader: flash FIRMWARE.hex\n"
    "update     renew the firmware through the programming interface: update FIRMWARE.uhx\n"
    "unzip      unpack a ZIP archive into a folder: unzip ARCHIVE.zip FOLDER";

struct CommandForm {
    CliCommand command;
    const char* word;
    qsizetype leastOperands;
    qsizetype mostOperands;
};

constexpr qsizetype many = 1'000'000;
constexpr CommandForm forms[] = {
    {CliCommand::ports, "ports", 0, 0},       {CliCommand::identify, "identify", 0, 0},
    {CliCommand::read, "read", 0, 0},         {CliCommand::list, "list", 0, 1},
    {CliCommand::exportList, "export", 2, 2}, {CliCommand::compare, "compare", 2, 2},
    {CliCommand::set, "set", 1, many},        {CliCommand::write, "write", 0, many},
    {CliCommand::flash, "flash", 1, 1},       {CliCommand::update, "update", 1, 1},
    {CliCommand::unzip, "unzip", 2, 2},
};

const CommandForm* formOf(const QString& word)
{
    const auto* const found = std::find_if(std::begin(forms), std::end(forms), [&](const CommandForm& form) {
        return word == QLatin1String(form.word);
    });
    return found == std::end(forms) ? nullptr : found;
}

// Files are saved in the form that their name tells.
bool endsIn(const QString& file, std::initializer_list<const char*> extensions)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](const char* extension) { return suffix == QLatin1String(extension); });
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
    parser.setApplicationDescription(QStringLiteral("Reads and writes the decoders of Karvo vehicles.\n") +
                                     QLatin1String(exitCodes));
    parser.addPositionalArgument(
        QStringLiteral("command"), QLatin1String(commandHelp),
        QStringLiteral("ports|identify|read|list [MODEL]|export LIST FILE|compare A "
                       "B|set LISTS... CV=VALUE...|write CV=VALUE...|flash HEX|update UHX|unzip ZIP FOLDER"));
    parser.addOption(valued("port", "Port of the programming interface; else the stored one.", "COM5"));
    parser.addOption(
        valued("map-port", "Device of a port for this run; may be repeated.", "COM5=/dev/ttyUSB0"));
    parser.addOption(valued("simulate", "A simulated interface with this decoder on it.", "MODEL"));
    parser.addOption(valued("fault", "What goes wrong on the simulated line.", "NAME"));
    parser.addOption({QStringLiteral("no-pace"), QStringLiteral("The simulated line takes no time.")});
    parser.addOption(valued("language", "de, nl, en, es or fr; else the stored one.", "CODE"));
    parser.addOption(valued("program-folder", "Where the program's text files lie.", "DIR"));
    parser.addOption(
        valued("variant", "Which of the four bus or fire-engine lists of a model: 1 to 4.", "N"));
    parser.addOption({QStringLiteral("expert"), QStringLiteral("Show expert knowledge below its CVs.")});
    parser.addOption(valued("output", "Where read saves what is read: as a CV list, CSV or a text report.",
                            "FILE.kvr|csv|txt"));
    parser.addOption(valued("from", "The CV list that write writes.", "FILE.kvr"));
    parser.addOption(
        {QStringLiteral("dry-run"), QStringLiteral("Show what set and write would change, or check what "
                                                   "flash and update would send; do nothing.")});
    parser.addOption({QStringLiteral("yes"), QStringLiteral("Answer questions with yes.")});
    parser.addOption(valued(
        "force", "Answer with yes what --yes does not: limits, vehicle or backup; may be repeated.", "WHAT"));
    parser.addOption({QStringLiteral("json"), QStringLiteral("Print JSON.")});
    parser.addOption({QStringLiteral("help"), QStringLiteral("Print this help.")});
    parser.addOption({QStringLiteral("version"), QStringLiteral("Print the version.")});
}

CliParseResult wrong(const QString& text)
{
    return {std::nullopt, text, true};
}

// "CV3=12" or "3=12"; without a CV from 1 to 256 or a value from 0 to 255 nothing.
std::optional<CvChange> changeOf(const QString& word)
{
    static const QRegularExpression form(QStringLiteral("^(?:CV)?([0-9]{1,3})=([0-9]{1,3})$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(word);
    const CvChange change{match.captured(1).toInt(), match.captured(2).toInt()};
    const bool sound =
        match.hasMatch() && change.cv >= 1 && change.cv <= CvTable::lastRow && change.value <= 255;
    return sound ? std::optional<CvChange>(change) : std::nullopt;
}

// Tells the changes from the files; what is wrong, or nothing.
QString separateChanges(CliArguments& arguments)
{
    static const QRegularExpression start(QStringLiteral("^(?:CV)?[0-9]+="),
                                          QRegularExpression::CaseInsensitiveOption);
    QStringList lists;
    for (const QString& word : std::as_const(arguments.operands)) {
        if (!start.match(word).hasMatch()) {
            lists.append(word);
            continue;
        }
        const auto change = changeOf(word);
        const auto isSame = [&](const CvChange& other) { return other.cv == change->cv; };
        if (!change || std::any_of(arguments.changes.begin(), arguments.changes.end(), isSame))
            return QStringLiteral("%1 is no change like CV3=12, or the CV is named twice.").arg(word);
        arguments.changes.push_back(*change);
    }
    arguments.operands = lists;
    return {};
}

QString whatIsWrongWith(CliArguments& arguments)
{
    switch (arguments.command) {
    case CliCommand::exportList:
        return endsIn(arguments.operands.at(1), {"csv", "txt"})
                   ? QString()
                   : QStringLiteral("export takes a second name that ends in .csv or .txt.");
    case CliCommand::set:
        if (QString fault = separateChanges(arguments); !fault.isEmpty())
            return fault;
        return arguments.operands.isEmpty() || arguments.changes.empty()
                   ? QStringLiteral("set takes CV list files and changes like CV3=12.")
                   : QString();
    case CliCommand::write:
        if (QString fault = separateChanges(arguments); !fault.isEmpty())
            return fault;
        return !arguments.operands.isEmpty() || arguments.changes.empty() == arguments.from.isEmpty()
                   ? QStringLiteral("write takes changes like CV3=12, or --from and a CV list file.")
                   : QString();
    case CliCommand::list:
        return arguments.variant && arguments.operands.isEmpty()
                   ? QStringLiteral("--variant takes the name of a bus or fire-engine list before it.")
                   : QString();
    default:
        return {};
    }
}

// An option that says nothing must not lead to the real line: "--simulate $MODEL" with no MODEL.
QString whatIsWrongWithTheLine(const QCommandLineParser& parser)
{
    const bool simulated = parser.isSet(QStringLiteral("simulate"));
    if (simulated && parser.value(QStringLiteral("simulate")).isEmpty())
        return QStringLiteral("--simulate takes the name of a decoder.");
    if (!simulated && (parser.isSet(QStringLiteral("fault")) || parser.isSet(QStringLiteral("no-pace"))))
        return QStringLiteral("--fault and --no-pace are for --simulate.");
    return {};
}

// An option that the command does not heed must not look as if it did: `read --dry-run` would read.
QString whatIsWrongWithOptions(const QCommandLineParser& parser, CliCommand command)
{
    struct Heeded {
        const char* option;
        std::initializer_list<CliCommand> by;
    };
    const Heeded options[] = {
        {"dry-run", {CliCommand::set, CliCommand::write, CliCommand::flash, CliCommand::update}},
        {"from", {CliCommand::write}},
        {"force", {CliCommand::write}},
        {"output", {CliCommand::read}},
        {"variant", {CliCommand::list}}};
    for (const auto& [option, by] : options) {
        if (parser.isSet(QLatin1String(option)) && std::find(by.begin(), by.end(), command) == by.end())
            return QStringLiteral("--%1 does not go with this command; --help tells.")
                .arg(QLatin1String(option));
    }
    return {};
}

// What --force names; nothing where a word is none of them.
std::optional<std::set<QuestionKind>> forcedKinds(const QStringList& words)
{
    std::set<QuestionKind> kinds;
    for (const QString& word : words) {
        if (word == QLatin1String("limits"))
            kinds.insert(QuestionKind::limits);
        else if (word == QLatin1String("vehicle"))
            kinds.insert(QuestionKind::vehicle);
        else if (word == QLatin1String("backup"))
            kinds.insert(QuestionKind::backup);
        else
            return std::nullopt;
    }
    return kinds;
}

CliParseResult taken(const QCommandLineParser& parser, CliCommand command)
{
    CliArguments arguments;
    arguments.command = command;
    arguments.operands = parser.positionalArguments().mid(1);
    arguments.output = parser.value(QStringLiteral("output"));
    arguments.from = parser.value(QStringLiteral("from"));
    arguments.yes = parser.isSet(QStringLiteral("yes"));
    arguments.dryRun = parser.isSet(QStringLiteral("dry-run"));
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
    if (parser.isSet(QStringLiteral("variant"))) {
        arguments.variant = parser.value(QStringLiteral("variant")).toInt() - 1;
        if (*arguments.variant < 0 || *arguments.variant >= automaticVariants)
            return wrong(QStringLiteral("--variant takes 1 to 4."));
    }
    const auto forced = forcedKinds(parser.values(QStringLiteral("force")));
    if (!forced)
        return wrong(QStringLiteral("--force takes limits, vehicle or backup."));
    arguments.forced = *forced;
    if (!arguments.output.isEmpty() && !endsIn(arguments.output, {"kvr", "csv", "txt"}))
        return wrong(QStringLiteral("--output takes a name that ends in .kvr, .csv or .txt."));
    for (const QString& fault : {whatIsWrongWithTheLine(parser), whatIsWrongWithOptions(parser, command),
                                 whatIsWrongWith(arguments)}) {
        if (!fault.isEmpty())
            return wrong(fault);
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
    const CommandForm* const form = positional.isEmpty() ? nullptr : formOf(positional.first());
    if (form == nullptr)
        return wrong(QStringLiteral("A command is needed: ports, identify, read, list, export, compare, set, "
                                    "write, flash or update."));
    const qsizetype operands = positional.size() - 1;
    if (operands > form->mostOperands)
        return wrong(QStringLiteral("Too many arguments: %1").arg(positional.last()));
    if (operands < form->leastOperands)
        return wrong(QStringLiteral("Too few arguments for %1; --help tells.").arg(positional.first()));
    return taken(parser, form->command);
}

} // namespace karvo
