#include "cvdata/expert_file.h"

#include "cvdata/description_fields.h"
#include "program/text_lines.h"

namespace karvo
{

namespace
{

constexpr std::size_t nameField = 2;
constexpr std::size_t knowledgeField = 6;

Text fieldAt(const std::vector<TextView>& fields, std::size_t index)
{
    return index < fields.size() ? withLineBreaks(fields[index]) : Text();
}

// A list line longer than this would need scrolling in most windows.
constexpr std::size_t longestSentence = 75;

bool isCapital(char16_t character)
{
    return lowerCase(Text(1, character)).front() != character;
}

// The word that ends before `end`; empty at the beginning of the text.
TextView wordBefore(TextView text, std::size_t end)
{
    const auto last = text.substr(0, end).find_last_not_of(u' ');
    if (last == TextView::npos)
        return {};
    const auto blank = text.find_last_of(u' ', last);
    const std::size_t start = blank == TextView::npos ? 0 : blank + 1;
    return text.substr(start, last + 1 - start);
}

// A word such as the "z" of "z. B." and the "p" of "p. ej.".
bool isSmallLetter(TextView word)
{
    return word.size() == 1 && word.front() >= u'a' && word.front() <= u'z';
}

// Whether the stop at `end` belongs to "z. B." or the like; a unit behind a number is none: "0,3 s.".
bool isAbbreviation(TextView text, std::size_t end)
{
    const TextView word = wordBefore(text, end);
    const TextView before = wordBefore(text, static_cast<std::size_t>(word.data() - text.data()));
    if (isSmallLetter(word))
        return before.empty() || before.back() < u'0' || before.back() > u'9';
    return before.size() == 2 && before.back() == u'.' && isSmallLetter(before.substr(0, 1));
}

// Whether the full stop, question or exclamation mark at `end` ends a sentence, and no abbreviation.
bool endsSentence(TextView text, std::size_t end)
{
    if (TextView(u".!?").find(text[end]) == TextView::npos)
        return false;
    const auto next = text.find_first_not_of(u' ', end + 1);
    if (next == TextView::npos)
        return true;
    return next > end + 1 && isCapital(text[next]) && !isAbbreviation(text, end);
}

Text firstSentence(TextView text)
{
    text = text.substr(0, text.find(lineBreak));
    for (std::size_t end = 0; end < text.size(); ++end) {
        if (endsSentence(text, end))
            return Text(text.substr(0, end + 1));
    }
    return Text(text);
}

} // namespace

Text expertLine(const ExpertEntry& entry)
{
    Text line = firstSentence(trimmed(entry.knowledge));
    if (line.empty())
        return entry.name;
    if (line.size() > longestSentence)
        line = line.substr(0, line.rfind(u' ', longestSentence)) + u"\u2026";
    return line;
}

std::optional<ExpertFile> parseExpertFile(std::span<const std::uint8_t> content)
{
    ExpertFile file;
    const auto lines = linesOf(content);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (trimmed(lines[i]).empty())
            continue;
        const auto fields = fieldsOf(lines[i]);
        const auto cv = fields.empty() ? std::nullopt : numberFromText(fields.front());
        const bool inTable = cv && *cv >= 1 && *cv <= CvTable::lastRow;
        const ExpertEntry entry{fieldAt(fields, nameField), fieldAt(fields, knowledgeField)};
        if (!inTable || !file.entries.emplace(*cv, entry).second)
            file.faultyLines.push_back(static_cast<int>(i) + 1);
    }
    if (file.entries.empty())
        return std::nullopt;
    return file;
}

} // namespace karvo
