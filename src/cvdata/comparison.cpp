#include "cvdata/comparison.h"

#include "cvdata/csv_export.h"
#include "cvdata/list_file.h"
#include "cvdata/speed_cvs.h"
#include "program/text_lines.h"

namespace karvo
{

namespace
{

constexpr TextView noValue = u"---";

Text shownValue(const CvTable& table, int cv)
{
    const Text& value = table.at(cv, Column::value);
    return value.empty() ? Text(noValue) : value;
}

Likeness likenessOf(const CvTable& first, const CvTable& second, int cv)
{
    const Text& one = first.at(cv, Column::value);
    const Text& other = second.at(cv, Column::value);
    if (one.empty() != other.empty())
        return one.empty() ? Likeness::onlySecond : Likeness::onlyFirst;
    // A CV without a value is something else than a CV that the side does not know.
    if (first.describes(cv) != second.describes(cv))
        return first.describes(cv) ? Likeness::onlyFirst : Likeness::onlySecond;
    return one == other ? Likeness::equal : Likeness::different;
}

int& countOf(Comparison& comparison, Likeness likeness)
{
    switch (likeness) {
    case Likeness::different:
        return comparison.different;
    case Likeness::onlyFirst:
        return comparison.onlyFirst;
    case Likeness::onlySecond:
        return comparison.onlySecond;
    case Likeness::equal:
        break;
    }
    return comparison.equal;
}

Text nameOf(const CvTable& words, int cv)
{
    const Text& text = words.at(cv, Column::text);
    return text.substr(0, text.find(lineBreak));
}

// The order of the lines: by CV number, but the speed steps from 1 to 28 where CV70 stands.
std::vector<std::pair<int, Text>> labels(SpeedSteps steps)
{
    std::vector<std::pair<int, Text>> all;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const bool isStep = steps == SpeedSteps::asSteps && isSpeedStepCv(cv);
        if (!isStep)
            all.emplace_back(cv, comparedCvLabel(cv));
        for (int step = 1; isStep && cv == firstSpeedStepCv && step <= speedStepCount; ++step)
            all.emplace_back(cvOfSpeedStep(step), comparedStepLabel(step));
    }
    return all;
}

} // namespace

CvSide sideOf(const CvSet& set, const Text& name)
{
    const auto processor = set.isOffline() ? set.fileProcessor : set.profile.processor;
    return {name, &set.table, processor, !set.isOffline()};
}

CvSide sideOf(const ListFile& file, const Text& name)
{
    return {name, &file.table, file.processor, false};
}

SpeedSteps speedStepsOf(Model model)
{
    return isReceiver(model) ? SpeedSteps::asRows : SpeedSteps::asSteps;
}

Comparison compare(const CvSide& first, const CvSide& second, const CvTable& words, SpeedSteps steps)
{
    Comparison comparison;
    comparison.firstName = first.name;
    comparison.secondName = second.name;
    for (const auto& [cv, label] : labels(steps)) {
        if (!first.table->describes(cv) && !second.table->describes(cv))
            continue;
        const Likeness likeness = likenessOf(*first.table, *second.table, cv);
        comparison.lines.push_back({cv, label, shownValue(*first.table, cv), shownValue(*second.table, cv),
                                    likeness, nameOf(words, cv)});
        ++countOf(comparison, likeness);
    }
    return comparison;
}

std::optional<Text> comparisonRefusal(const CvSide& first, const CvSide& second, const LanguageTables& texts)
{
    if (!first.processor || !second.processor || *first.processor == *second.processor)
        return std::nullopt;
    const bool smallFile = *second.processor == Processor::atmega168;
    const Text inFile = texts.message(smallFile ? Message::fileHasAtmega168 : Message::fileHasAtmega328);
    const Text other =
        !first.isVehicle
            ? texts.message(Message::firstListHasProcessor, {Text(processorName(*first.processor))})
            : texts.message(smallFile ? Message::vehicleHasAtmega328 : Message::vehicleHasAtmega168);
    return inFile + Text(lineBreak) + other + Text(lineBreak) + texts.message(Message::cannotCompare);
}

Text comparedCvLabel(int cv)
{
    return u"CV" + textFromNumber(cv) + u" = ";
}

Text comparedStepLabel(int step)
{
    const bool narrow = step >= 14 && step <= 20;
    return u"  " + textFromNumber(step) + (narrow ? u" (CV" : u"  (CV") +
           textFromNumber(cvOfSpeedStep(step)) + u") = ";
}

Text likenessText(Likeness likeness, const LanguageTables& texts)
{
    switch (likeness) {
    case Likeness::different:
        return texts.caption(Caption::comparedDifferent);
    case Likeness::onlyFirst:
        return texts.caption(Caption::comparedOnlyFirst);
    case Likeness::onlySecond:
        return texts.caption(Caption::comparedOnlySecond);
    case Likeness::equal:
        break;
    }
    return texts.caption(Caption::comparedEqual);
}

Text countsText(const Comparison& comparison, const LanguageTables& texts)
{
    return texts.caption(Caption::comparedCounts,
                         {textFromNumber(comparison.equal), textFromNumber(comparison.different),
                          textFromNumber(comparison.onlyFirst), textFromNumber(comparison.onlySecond)});
}

std::vector<Text> comparisonReport(const Comparison& comparison, const LanguageTables& texts)
{
    std::vector<Text> lines = {comparison.firstName, comparison.secondName, countsText(comparison, texts),
                               Text()};
    for (const ComparisonLine& line : comparison.lines)
        lines.push_back(line.text() + u"\t" + likenessText(line.likeness, texts) + u"\t" + line.name);
    return lines;
}

Bytes comparisonCsv(const Comparison& comparison, const LanguageTables& texts)
{
    std::vector<Text> lines = {u"CV-Nummer;" + csvField(comparison.firstName) + u";" +
                               csvField(comparison.secondName) + u";" +
                               csvField(texts.caption(Caption::comparedResult)) + u";CV-Text"};
    for (const ComparisonLine& line : comparison.lines) {
        lines.push_back(textFromNumber(line.cv) + u";" + line.firstValue + u";" + line.secondValue + u";" +
                        csvField(likenessText(line.likeness, texts)) + u";" + csvField(line.name));
    }
    return contentOfLines(lines);
}

std::optional<Text> lookedUpValues(const CvTable& table, TextView answer, const LanguageTables& texts)
{
    const Text word = lowerCase(trimmed(answer));
    if (word.empty())
        return std::nullopt;
    const bool isCv = word.starts_with(u"cv");
    const auto number = numberFromText(isCv ? TextView(word).substr(2) : TextView(word));
    Text found;
    for (int cv = 1; number && cv <= CvTable::lastRow; ++cv) {
        const bool fits = isCv ? cv == *number : table.value(cv) == number;
        if (table.describes(cv) && fits)
            found += (found.empty() ? Text() : Text(lineBreak)) + comparedCvLabel(cv) + shownValue(table, cv);
    }
    if (found.empty())
        found = texts.caption(Caption::nothingFound);
    return texts.message(Message::valuesFromFile) + u" " + found;
}

} // namespace karvo
