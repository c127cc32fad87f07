#include "cli/cli_help.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr TextView programName = u"karvo-cli";
constexpr std::size_t leftColumn = 30;
constexpr std::size_t lineWidth = 100;

Text wide(std::string_view word)
{
    return textFromUtf8(word);
}

// Broken between words; the lines behind the first one begin under its beginning.
Text wrapped(TextView text, std::size_t indent)
{
    const std::size_t width = lineWidth - indent;
    Text lines;
    while (text.size() > width) {
        const auto blank = text.rfind(u' ', width);
        if (blank == TextView::npos)
            break;
        lines += Text(text.substr(0, blank)) + u"\n" + Text(indent, u' ');
        text.remove_prefix(blank + 1);
    }
    return lines + Text(text) + u"\n";
}

// Two columns; a left one that is too long has its right one below it.
Text row(const Text& left, const Text& right)
{
    Text start = u"  " + left;
    const bool isShort = start.size() + 2 <= leftColumn;
    start += isShort ? Text(leftColumn - start.size(), u' ') : u"\n" + Text(leftColumn, u' ');
    return start + wrapped(right, leftColumn);
}

Text withValue(const CommandOption& option)
{
    Text start =
        option.letter == 0 ? Text() : joined({u"-", Text(1, static_cast<char16_t>(option.letter)), u", "});
    start += joined({u"--", wide(option.name)});
    return option.value.empty() ? start : start + u" " + wide(option.value);
}

bool goesWithAll(std::string_view option)
{
    return std::all_of(commands().begin(), commands().end(),
                       [&](const Command& command) { return isHeeded(command, option); });
}

// Those of one command; without a command those that go with every one.
Text optionRows(const Command* command, const LanguageTables& texts)
{
    Text rows = texts.caption(Caption::cliOptions) + u"\n";
    for (const CommandOption& option : commandOptions()) {
        const bool isShown = command == nullptr ? goesWithAll(option.name) : isHeeded(*command, option.name);
        if (isShown)
            rows += row(withValue(option), texts.caption(option.help));
    }
    return rows;
}

Text usageLine(const Text& usage, const LanguageTables& texts)
{
    return texts.caption(Caption::cliUsage, {usage}) + u"\n";
}

} // namespace

Text generalHelp(const LanguageTables& texts)
{
    Text help = texts.caption(Caption::cliAbout) + u"\n" +
                usageLine(Text(programName) + u" COMMAND ...", texts) + u"\n" +
                texts.caption(Caption::cliCommands) + u"\n";
    for (const Command& command : commands()) {
        const TextView gap = command.operands.empty() ? u"" : u" ";
        help += row(joined({wide(command.word), gap, wide(command.operands)}), texts.caption(command.help));
    }
    return joined({help, u"\n", optionRows(nullptr, texts), u"\n", texts.caption(Caption::cliMoreHelp)});
}

Text helpOf(const Command& command, const LanguageTables& texts)
{
    Text help = usageLine(usageOf(command), texts) + wrapped(texts.caption(command.help), 0);
    if (command.note)
        help += wrapped(texts.caption(*command.note), 0);
    help += joined({u"\n", optionRows(&command, texts), u"\n", texts.caption(Caption::cliExitCodes), u"\n"});
    for (const CommandExit& exit : command.exits)
        help += row(textFromNumber(exitNumber(exit.code)), texts.caption(exit.help));
    help.pop_back();
    return help;
}

Text usageOf(const Command& command)
{
    const Text start = Text(programName) + u" " + wide(command.word);
    return command.operands.empty() ? start : start + u" " + wide(command.operands);
}

Text commandWords()
{
    Text words;
    for (const Command& command : commands())
        words += (words.empty() ? Text() : u", ") + wide(command.word);
    return words;
}

} // namespace karvo
