#include "workbench/list_notes.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

using Kind = ListFault::Kind;

constexpr std::pair<Kind, Message> notes[] = {
    {Kind::noRow, Message::linesWithoutCv},
    {Kind::numberOutOfRange, Message::linesBeyondTable},
    {Kind::repeatedRow, Message::linesRepeated},
    {Kind::wrongValue, Message::linesWithWrongValue},
    {Kind::noEnd, Message::listEndMissing},
    {Kind::noFileEnd, Message::fileEndMissing},
    {Kind::unknownProcessor, Message::unknownProcessor},
};

// "12, 13 (300), 20, ...": a number that is out of range stands behind its line; a box has room for so many.
Text linesOf(const std::vector<ListFault>& faults, Kind kind)
{
    constexpr std::size_t most = 12;
    Text lines;
    std::size_t count = 0;
    for (const ListFault& fault : faults) {
        if (fault.kind != kind || ++count > most)
            continue;
        lines += (lines.empty() ? Text() : Text(u", ")) + textFromNumber(fault.line);
        if (fault.number)
            lines += u" (" + textFromNumber(*fault.number) + u")";
    }
    return count > most ? lines + u", ..." : lines;
}

} // namespace

Text listNotes(const ListFile& list, const std::filesystem::path& path, const LanguageTables& texts)
{
    if (list.faults.empty())
        return {};
    Text text = texts.message(Message::listOpenedInPart, {pathText(path)});
    for (const auto& [kind, message] : notes) {
        const Text lines = linesOf(list.faults, kind);
        if (!lines.empty())
            text += Text(lineBreak) + texts.message(message, {lines, list.unknownProcessor});
    }
    return text;
}

} // namespace karvo
