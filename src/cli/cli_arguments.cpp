#include "cli/cli_arguments.h"

#include "cli/cli_help.h"
#include "cli/command_table.h"
#include "cvdata/description_choice.h"
#include "platform/text_conversion.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <initializer_list>

namespace karvo
{

namespace
{

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

QString nameOf(const CommandOption& option)
{
    return QString::fromLatin1(option.name.data(), static_cast<qsizetype>(option.name.size()));
}

void addOptions(QCommandLineParser& parser)
{
    for (const CommandOption& option : commandOptions()) {
        const QString name = nameOf(option);
        const QStringList names =
            option.name == "help" ? QStringList{QStringLiteral("h"), name} : QStringList{name};
        parser.addOption(option.value.empty() ? QCommandLineOption(names)
                                              : QCommandLineOption(names, {}, QStringLiteral("value")));
    }
}

Text wide(std::string_view word)
{
    return textFromUtf8(word);
}

// One run of understanding: what is wrong is returned as words, nothing when all is well.
class Reader
{
public:
    using Fault = std::optional<Text>;

    Reader(const QCommandLineParser& parser, const Command& command, const LanguageTables& texts)
        : parser_(parser), command_(command), texts_(texts)
    {
    }

    CliParseResult read()
    {
        for (const auto check : {&Reader::countWords, &Reader::refuseUnheeded, &Reader::takeLine,
                                 &Reader::takeValues, &Reader::takeOperands}) {
            if (Fault fault = (this->*check)())
                return {std::nullopt, *fault, true};
        }
        return {arguments_, {}, false};
    }

private:
    Text say(Message message, std::initializer_list<Text> values = {}) const
    {
        return texts_.message(message, values);
    }
    bool isSet(const char* option) const { return parser_.isSet(QLatin1String(option)); }
    QString value(const char* option) const { return parser_.value(QLatin1String(option)); }

    Fault countWords()
    {
        arguments_.command = command_.command;
        arguments_.operands = parser_.positionalArguments().mid(1);
        if (arguments_.operands.size() > command_.mostOperands)
            return say(Message::tooManyArguments,
                       {toText(arguments_.operands.at(command_.mostOperands)), usageOf(command_)});
        if (arguments_.operands.size() < command_.leastOperands)
            return say(Message::tooFewArguments, {usageOf(command_)});
        return std::nullopt;
    }

    // An option that the command does not heed must not look as if it did: `identify --dry-run`.
    Fault refuseUnheeded()
    {
        for (const CommandOption& option : commandOptions()) {
            if (parser_.isSet(nameOf(option)) && !isHeeded(command_, option.name))
                return say(Message::optionNotHeeded, {u"--" + wide(option.name), wide(command_.word)});
        }
        return std::nullopt;
    }

    Fault takeLine()
    {
        arguments_.portMappings = parser_.values(QStringLiteral("map-port"));
        arguments_.simulatedDecoder = value("simulate");
        arguments_.fault = value("fault");
        arguments_.unpaced = isSet("no-pace");
        if (isSet("port")) {
            arguments_.port = portOf(value("port"));
            if (!arguments_.port)
                return say(Message::portRange);
        }
        // An option that says nothing must not lead to the real line: "--simulate $MODEL" with no MODEL.
        if (isSet("simulate") && arguments_.simulatedDecoder.isEmpty())
            return say(Message::simulateNeedsName);
        if (!isSet("simulate") && (isSet("fault") || isSet("no-pace")))
            return say(Message::onlyWithSimulate);
        return std::nullopt;
    }

    Fault takeValues()
    {
        arguments_.output = value("output");
        arguments_.from = value("from");
        arguments_.yes = isSet("yes");
        arguments_.dryRun = isSet("dry-run");
        arguments_.language = value("language");
        arguments_.programFolder = value("program-folder");
        arguments_.expert = isSet("expert");
        arguments_.json = isSet("json");
        if (isSet("variant")) {
            arguments_.variant = value("variant").toInt() - 1;
            if (*arguments_.variant < 0 || *arguments_.variant >= automaticVariants)
                return say(Message::variantRange);
            if (arguments_.operands.isEmpty())
                return say(Message::variantNeedsList);
        }
        if (!arguments_.output.isEmpty() && !endsIn(arguments_.output, {"kvr", "csv", "txt"}))
            return say(Message::outputForm);
        return takeForced();
    }

    Fault takeForced()
    {
        for (const QString& word : parser_.values(QStringLiteral("force"))) {
            if (word == QLatin1String("limits"))
                arguments_.forced.insert(QuestionKind::limits);
            else if (word == QLatin1String("vehicle"))
                arguments_.forced.insert(QuestionKind::vehicle);
            else if (word == QLatin1String("backup"))
                arguments_.forced.insert(QuestionKind::backup);
            else
                return say(Message::forceWords);
        }
        return std::nullopt;
    }

    Fault takeOperands()
    {
        const bool takesChanges =
            command_.command == CliCommand::set || command_.command == CliCommand::write;
        if (takesChanges) {
            if (Fault fault = separateChanges())
                return fault;
        }
        const QStringList& files = arguments_.operands;
        const bool anyChange = !arguments_.changes.empty();
        if (command_.command == CliCommand::exportList && !endsIn(files.at(1), {"csv", "txt"}))
            return say(Message::exportForm, {toText(files.at(1))});
        if (command_.command == CliCommand::set && (files.isEmpty() || !anyChange))
            return say(Message::tooFewArguments, {usageOf(command_)});
        if (command_.command == CliCommand::write && !files.isEmpty())
            return say(Message::noChange, {toText(files.first())});
        if (command_.command == CliCommand::write && anyChange == !arguments_.from.isEmpty())
            return say(Message::writeNeedsOneOfBoth);
        return std::nullopt;
    }

    // Tells the changes from the files.
    Fault separateChanges()
    {
        static const QRegularExpression start(QStringLiteral("^(?:CV)?[0-9]+="),
                                              QRegularExpression::CaseInsensitiveOption);
        QStringList files;
        for (const QString& word : std::as_const(arguments_.operands)) {
            if (!start.match(word).hasMatch()) {
                files.append(word);
                continue;
            }
            if (Fault fault = takeChange(word))
                return fault;
        }
        arguments_.operands = files;
        return std::nullopt;
    }

    // "CV3=12" or "3=12".
    Fault takeChange(const QString& word)
    {
        static const QRegularExpression form(QStringLiteral("^(?:CV)?([0-9]{1,9})=([0-9]{1,9})$"),
                                             QRegularExpression::CaseInsensitiveOption);
        const auto match = form.match(word);
        if (!match.hasMatch())
            return say(Message::noChange, {toText(word)});
        const CvChange change{match.captured(1).toInt(), match.captured(2).toInt()};
        if (change.cv < 1 || change.cv > CvTable::lastRow)
            return say(Message::cvOutOfRange, {toText(word), textFromNumber(change.cv)});
        if (!isCvValue(change.value))
            return say(Message::valueOutOfRange, {toText(word), textFromNumber(change.value)});
        const bool isNamed = std::any_of(arguments_.changes.begin(), arguments_.changes.end(),
                                         [&](const CvChange& other) { return other.cv == change.cv; });
        if (isNamed)
            return say(Message::cvNamedTwice, {toText(word), textFromNumber(change.cv)});
        arguments_.changes.push_back(change);
        return std::nullopt;
    }

    const QCommandLineParser& parser_;
    const Command& command_;
    const LanguageTables& texts_;
    CliArguments arguments_;
};

CliParseResult wrong(Message message, std::initializer_list<Text> values, const LanguageTables& texts)
{
    return {std::nullopt, texts.message(message, values), true};
}

CliParseResult wrongCommand(const QString& word, const LanguageTables& texts)
{
    std::vector<std::string_view> words;
    for (const Command& command : commands())
        words.push_back(command.word);
    const auto nearest = nearestWord(word.toStdString(), words);
    if (nearest.empty())
        return wrong(Message::unknownCommand, {toText(word), commandWords()}, texts);
    return wrong(Message::unknownCommandNearest, {toText(word), wide(nearest), commandWords()}, texts);
}

// An option without the value that it needs, or with one that it does not take.
CliParseResult wrongValue(const QStringList& words, const LanguageTables& texts)
{
    for (const CommandOption& option : commandOptions()) {
        const QString name = QStringLiteral("--") + nameOf(option);
        if (words.last() == name)
            return wrong(Message::optionNeedsValue, {toText(name), wide(option.value)}, texts);
        const QStringList typed = words.filter(name + QLatin1Char('='));
        if (option.value.empty() && !typed.isEmpty())
            return wrong(Message::tooManyArguments, {toText(typed.first()), toText(name)}, texts);
    }
    return wrong(Message::unknownOption, {toText(words.last()), Text()}, texts);
}

CliParseResult wrongOption(const QCommandLineParser& parser, const QStringList& words,
                           const LanguageTables& texts)
{
    if (parser.unknownOptionNames().isEmpty())
        return wrongValue(words, texts);
    std::vector<std::string_view> names;
    for (const CommandOption& option : commandOptions())
        names.push_back(option.name);
    const QString name = parser.unknownOptionNames().first();
    const Text typed = (name.size() == 1 ? u"-" : u"--") + toText(name);
    if (const auto nearest = nearestWord(name.toStdString(), names); !nearest.empty())
        return wrong(Message::unknownOptionNearest, {typed, u"--" + wide(nearest)}, texts);
    const QString command = parser.positionalArguments().value(0);
    const bool known = commandOf(command.toStdString()) != nullptr;
    return wrong(Message::unknownOption, {typed, known ? toText(command) + u" " : Text()}, texts);
}

} // namespace

CliParseResult parseCliArguments(const QStringList& words, const LanguageTables& texts)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(words))
        return wrongOption(parser, words, texts);
    if (parser.isSet(QStringLiteral("version")))
        return {std::nullopt, u"karvo-cli " + wide(KARVO_VERSION), false};
    const QString word = parser.positionalArguments().value(0);
    const Command* const command = commandOf(word.toStdString());
    if (parser.isSet(QStringLiteral("help")) && (word.isEmpty() || command != nullptr))
        return {std::nullopt, command == nullptr ? generalHelp(texts) : helpOf(*command, texts), false};
    if (word.isEmpty())
        return wrong(Message::commandNeeded, {commandWords()}, texts);
    if (command == nullptr)
        return wrongCommand(word, texts);
    return Reader(parser, *command, texts).read();
}

QString earlyValue(const QStringList& words, const QString& option)
{
    const QString name = QStringLiteral("--") + option;
    QString value;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (words.at(i) == name)
            value = words.value(i + 1);
        else if (words.at(i).startsWith(name + QLatin1Char('=')))
            value = words.at(i).mid(name.size() + 1);
    }
    return value;
}

} // namespace karvo
