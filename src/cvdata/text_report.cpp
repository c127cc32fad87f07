#include "cvdata/text_report.h"

#include "cvdata/changes.h"
#include "cvdata/speed_cvs.h"
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

// The list, each line that stands for many CVs followed by theirs.
MainList withEveryCv(const CvSet& set, const LanguageTables& texts)
{
    MainList lines;
    for (const ListLine& line : set.list) {
        lines.push_back(line);
        for (int step = 1; line.lastCv != 0 && step <= speedStepCount; ++step) {
            const int cv = cvOfSpeedStep(step);
            lines.push_back(speedStepLine(set.table, step, set.table.at(cv, Column::value),
                                          texts.message(Message::unitOfSpeedStep)));
            if (isChanged(set, cv))
                lines.back().text += u"  " + texts.caption(Caption::changedMark);
        }
    }
    return lines;
}

} // namespace

std::vector<Text> linesOfEveryCv(const CvSet& set, const LanguageTables& texts)
{
    const MainList list = withEveryCv(set, texts);
    std::size_t widest = 0;
    for (const ListLine& line : list)
        widest = std::max(widest, line.name.empty() ? 0 : line.text.size());
    std::vector<Text> lines;
    lines.reserve(list.size());
    for (const ListLine& line : list) {
        const Text padding(line.name.empty() ? 0 : widest + 2 - line.text.size(), u' ');
        lines.push_back(line.text + padding + line.name);
    }
    return lines;
}

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
    for (Text& line : linesOfEveryCv(set, texts))
        lines.push_back(std::move(line));
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
