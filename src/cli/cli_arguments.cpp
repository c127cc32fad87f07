#include "cli/cli_arguments.h"

#include "cli/cli_help.h"
#include "cli/command_table.h"
#include "cvdata/description_choice.h"
#include "platform/text_conversion.h"

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

QStringList qtStrings(const std::vector<std::string>& words)
{
    QStringList list;
    for (const std::string& word : words)
        list.append(QString::fromStdString(word));
    return list;
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

    Reader(const CommandWords& words, const Command& command, const LanguageTables& texts)
        : words_(words), command_(command), texts_(texts)
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
    bool isSet(const char* option) const { return words_.has(option); }
    QString value(const char* option) const { return QString::fromStdString(words_.value(option)); }

    Fault countWords()
    {
        arguments_.command = command_.command;
        arguments_.operands = qtStrings(words_.plain()).mid(1);
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
            if (words_.has(option.name) && !isHeeded(command_, option.name))
                return say(Message::optionNotHeeded, {u"--" + wide(option.name), wide(command_.word)});
        }
        return std::nullopt;
    }

    Fault takeLine()
    {
        arguments_.portMappings = qtStrings(words_.values("map-port"));
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
        for (const std::string& word : words_.values("force")) {
            if (word == "limits")
                arguments_.forced.insert(QuestionKind::limits);
            else if (word == "vehicle")
                arguments_.forced.insert(QuestionKind::vehicle);
            else if (word == "backup")
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
        if (command_.command == CliCommand::sheet && arguments_.from.isEmpty())
            return say(Message::tooFewArguments, {usageOf(command_)});
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
        const auto change = changeFromText(toText(word));
        if (!change)
            return say(Message::noChange, {toText(word)});
        if (change->cv < 1 || change->cv > CvTable::lastRow)
            return say(Message::cvOutOfRange, {toText(word), textFromNumber(change->cv)});
        if (!isCvValue(change->value))
            return say(Message::valueOutOfRange, {toText(word), textFromNumber(change->value)});
        const bool isNamed = std::any_of(arguments_.changes.begin(), arguments_.changes.end(),
                                         [&](const CvChange& other) { return other.cv == change->cv; });
        if (isNamed)
            return say(Message::cvNamedTwice, {toText(word), textFromNumber(change->cv)});
        arguments_.changes.push_back(*change);
        return std::nullopt;
    }

    const CommandWords& words_;
    const Command& command_;
    const LanguageTables& texts_;
    CliArguments arguments_;
};

CliParseResult wrong(Message message, std::initializer_list<Text> values, const LanguageTables& texts)
{
    return {std::nullopt, texts.message(message, values), true};
}

CliParseResult wrongCommand(const std::string& word, const LanguageTables& texts)
{
    std::vector<std::string_view> words;
    for (const Command& command : commands())
        words.push_back(command.word);
    const auto nearest = nearestWord(word, words);
    if (nearest.empty())
        return wrong(Message::unknownCommand, {wide(word), commandWords()}, texts);
    return wrong(Message::unknownCommandNearest, {wide(word), wide(nearest), commandWords()}, texts);
}

// `command`: as typed; empty where there is none.
CliParseResult unknownOption(const std::string& typed, const std::string& command,
                             const LanguageTables& texts)
{
    std::vector<std::string_view> names;
    for (const CommandOption& option : commandOptions())
        names.push_back(option.name);
    const auto name = std::string_view(typed).substr(typed.starts_with("--") ? 2 : 1);
    if (const auto nearest = nearestWord(name, names); !nearest.empty())
        return wrong(Message::unknownOptionNearest, {wide(typed), u"--" + wide(nearest)}, texts);
    const bool known = commandOf(command) != nullptr;
    return wrong(Message::unknownOption, {wide(typed), known ? wide(command) + u" " : Text()}, texts);
}

CliParseResult wrongWord(const WordFault& fault, const std::string& command, const LanguageTables& texts)
{
    switch (fault.kind) {
    case WordFault::Kind::needsValue:
        return wrong(Message::optionNeedsValue, {wide(fault.typed), wide(fault.form->value)}, texts);
    case WordFault::Kind::takesNoValue:
        return wrong(Message::tooManyArguments, {wide(fault.typed), u"--" + wide(fault.form->name)}, texts);
    case WordFault::Kind::unknownOption:
        break;
    }
    return unknownOption(fault.typed, command, texts);
}

} // namespace

CliParseResult parseCliArguments(const CommandWords& words, const LanguageTables& texts)
{
    const std::string word = words.plain().empty() ? std::string() : words.plain().front();
    if (words.fault())
        return wrongWord(*words.fault(), word, texts);
    if (words.has("version"))
        return {std::nullopt, u"karvo-cli " + wide(KARVO_VERSION), false};
    const Command* const command = commandOf(word);
    if (words.has("help") && (word.empty() || command != nullptr))
        return {std::nullopt, command == nullptr ? generalHelp(texts) : helpOf(*command, texts), false};
    if (word.empty())
        return wrong(Message::commandNeeded, {commandWords()}, texts);
    if (command == nullptr)
        return wrongCommand(word, texts);
    return Reader(words, *command, texts).read();
}

CommandWords cliWords(const std::vector<std::string>& words)
{
    static const auto forms = formsOf(commandOptions());
    return {words, forms, SingleDash::startsOption};
}

} // namespace karvo
