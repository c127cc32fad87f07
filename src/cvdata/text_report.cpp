#include "cvdata/text_report.h"

#include "program/path_text.h"

#include <algorithm>

namespace karvo
{

namespace
{

Text withoutForbiddenCharacters(TextView name)
{
    constexpr TextView forbidden = u"\\/:*?\"<>|";
    Text safe(name);
    for (char16_t& character : safe) {
        if (character < u' ' || forbidden.find(character) != TextView::npos)
            character = u'_';
    }
    return safe;
}

std::size_t widestText(const MainList& list)
{
    std::size_t width = 0;
    for (const ListLine& line : list)
        width = std::max(width, line.text.size());
    return width;
}

} // namespace

std::vector<Text> textReport(const CvSet& set, const LanguageTables& texts)
{
    std::vector<Text> lines;
    if (set.isEmpty() || (set.isOffline() && !set.isFromFile()))
        lines.push_back(texts.message(Message::nothingRead));
    if (set.isEmpty())
        return lines;
    lines.push_back(vehicleName(set));
    lines.push_back(set.loadedData);
    lines.emplace_back();
    const auto width = widestText(set.list) + 2;
    for (const ListLine& line : set.list) {
        const Text padding(line.name.empty() ? 0 : width - line.text.size(), u' ');
        lines.push_back(line.text + padding + line.name);
    }
    return lines;
}

Text vehicleName(const CvSet& set)
{
    return set.listPath.empty() ? Text(modelName(set.profile.model)) : pathText(set.listPath.stem());
}

Text reportFileName(const CvSet& set, const DateTime& now)
{
    return u"KARVO " + withoutForbiddenCharacters(vehicleName(set)) + u" " + dateText(now) + u".txt";
}

} // namespace karvo
