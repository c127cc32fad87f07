#include "editors/distance_table.h"

#include "cvdata/description_file.h"
#include "program/text_lines.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int highestTime = 255;

constexpr std::array<DistanceCv, distanceCvCount> cvs = {
    {{48, 0, 255, Message::brakeValueRefused, Message::brakeValueRange,
      u"Bremswert wenn vom vorrausfahrenden Fahrzeug FAHRT empfangen wurde;"},
     {52, 96, 150, Message::thresholdRefused, Message::thresholdRange,
      u"Unterhalb dieser Fahrstufe wird schneller beschleunigt, oberhalb langsamer;"},
     {53, 0, highestTime, Message::brakeValueRefused, Message::brakeValueRange,
      u"Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, wenn die Fahrstufe unterhalb von CV "
      u"52 "
      u"liegt;"},
     {54, 0, highestTime, Message::brakeValueRefused, Message::brakeValueRange,
      u"Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, wenn die Fahrstufe oberhalb von CV "
      u"52 "
      u"liegt"}}};

std::optional<int> within(const DistanceCv& cv, TextView typed)
{
    const auto number = numberFromText(trimmed(typed));
    return number && *number >= cv.lowest && *number <= cv.highest ? number : std::nullopt;
}

// Between the first separator, which stands behind a number of two digits, and the next one.
std::optional<Text> valueIn(TextView line)
{
    constexpr std::size_t start = 3;
    if (line.find(u';') != start - 1)
        return std::nullopt;
    const auto end = line.find(u';', start);
    const auto value =
        end == TextView::npos ? std::nullopt : numberFromText(trimmed(line.substr(start, end - start)));
    return value && *value >= 0 && *value <= 255 ? std::optional(textFromNumber(*value)) : std::nullopt;
}

void addRecords(std::vector<Text>& file, const DistanceValues& values)
{
    for (std::size_t i = 0; i < cvs.size(); ++i)
        file.push_back(textFromNumber(cvs[i].cv) + u";" + values[i] + u";" + Text(cvs[i].fileText));
}

void addTrailer(std::vector<Text>& file, std::span<const Text> listLines)
{
    const auto start = std::find(listLines.begin(), listLines.end(), cvSectionEnd);
    if (start == listLines.end())
        file.emplace_back(cvSectionEnd);
    else
        file.insert(file.end(), start, std::find(start, listLines.end(), Text()));
}

} // namespace

std::span<const DistanceCv, distanceCvCount> distanceCvs()
{
    return cvs;
}

DistanceValues distanceValuesOf(const CvTable& table)
{
    DistanceValues values;
    for (std::size_t i = 0; i < cvs.size(); ++i)
        values[i] = table.at(cvs[i].cv, Column::value);
    return values;
}

std::optional<Text> refusalOf(const DistanceCv& cv, TextView typed, const LanguageTables& texts)
{
    if (within(cv, typed))
        return std::nullopt;
    return texts.message(cv.refused) + Text(lineBreak) + texts.message(cv.range);
}

std::variant<WritePlan, std::size_t> planOfDistances(const DistanceValues& values)
{
    WritePlan plan;
    for (std::size_t i = 0; i < cvs.size(); ++i) {
        const auto value = within(cvs[i], values[i]);
        if (!value)
            return i;
        plan.push_back({cvs[i].cv, *value});
    }
    return plan;
}

std::optional<int> DistanceFile::firstFault() const
{
    if (!faultyLines.empty())
        return faultyLines.front();
    const bool holdsNone =
        std::all_of(values.begin(), values.end(), [](const Text& value) { return value.empty(); });
    return holdsNone ? std::optional(1) : std::nullopt;
}

DistanceFile parseDistanceFile(std::span<const std::uint8_t> content)
{
    DistanceFile file;
    const auto lines = linesOf(content);
    for (std::size_t line = 1; line < lines.size(); ++line) {
        const TextView text = lines[line];
        const auto* const cv = std::find_if(cvs.begin(), cvs.end(), [&](const DistanceCv& one) {
            return text.substr(0, 2) == textFromNumber(one.cv);
        });
        if (cv == cvs.end())
            continue;
        if (auto value = valueIn(text))
            file.values[static_cast<std::size_t>(cv - cvs.begin())] = std::move(*value);
        else
            file.faultyLines.push_back(static_cast<int>(line) + 1);
    }
    return file;
}

Bytes distanceFileContent(const DistanceValues& values, std::span<const Text> listLines)
{
    std::vector<Text> file = {u"CV-Nummer;CV-Wert;CV-Text;"};
    addRecords(file, values);
    addTrailer(file, listLines);
    return contentOfLines(file);
}

Bytes distancePresetContent(const DistanceValues& values)
{
    std::vector<Text> file = {u"CV-Nummer;CV-Wert;CV-Text"};
    addRecords(file, values);
    return contentOfLines(file);
}

} // namespace karvo
