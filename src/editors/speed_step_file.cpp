#include "editors/speed_step_file.h"

#include "cvdata/main_list.h"
#include "cvdata/speed_cvs.h"
#include "program/text_lines.h"

#include <algorithm>
#include <utility>

namespace karvo
{

namespace
{

constexpr TextView header = u"CV-Nummer;CV-Wert;CV-Text";
constexpr int lowestCv = 10;
constexpr int highestCv = 99;
constexpr int highestValue = 255;

bool isBlank(TextView line)
{
    return trimmed(line).empty();
}

// The first two characters, where a separator follows them: "120;" is not CV12.
int cvOf(TextView line)
{
    constexpr std::size_t digits = 2;
    if (line.size() <= digits || line[digits] != u';')
        return 0;
    return numberFromText(line.substr(0, digits)).value_or(0);
}

// Without what stands behind a decimal point or comma.
TextView integerPart(TextView text)
{
    const auto point = text.find_first_of(u".,");
    const bool onlyDigits = point != TextView::npos && point > 0 &&
                            text.find_first_not_of(u"0123456789", point + 1) == TextView::npos;
    return onlyDigits ? text.substr(0, point) : text;
}

// Between the last separator and the one before it.
std::optional<int> valueOf(TextView line)
{
    const auto last = line.rfind(u';');
    if (last == TextView::npos || last == 0)
        return std::nullopt;
    const auto before = line.rfind(u';', last - 1);
    if (before == TextView::npos)
        return std::nullopt;
    const auto value = numberFromText(integerPart(trimmed(line.substr(before + 1, last - before - 1))));
    return value && *value >= 0 && *value <= highestValue ? value : std::nullopt;
}

// A name must not look like a further field or line.
Text asField(Text text)
{
    for (std::size_t at = 0; (at = text.find(lineBreak, at)) != Text::npos;) {
        text.erase(at, lineBreak.size() - 1);
        text[at] = u' ';
    }
    std::replace(text.begin(), text.end(), u';', u',');
    return text;
}

// The number of a record in its place: two digits and more, or one.
bool isRecordOf(TextView line, int cv)
{
    return line.starts_with(textFromNumber(cv) + u";");
}

} // namespace

SpeedStepFile parseSpeedStepFile(std::span<const std::uint8_t> content)
{
    SpeedStepFile file;
    const auto lines = linesOf(content);
    int taken = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const TextView text = lines[i];
        const int line = static_cast<int>(i) + 1;
        if (isBlank(text))
            continue;
        if (++taken > speedStepCount) {
            file.fault = {SpeedStepFault::Kind::tooLong, line};
            break;
        }
        const int cv = cvOf(text);
        if (cv < lowestCv || cv > highestCv)
            continue;
        const auto value = valueOf(text);
        if (!value) {
            file.fault = {SpeedStepFault::Kind::wrongValue, line};
            break;
        }
        file.records.push_back({cv, *value});
    }
    return file;
}

Bytes speedStepFileContent(const CvTable& table)
{
    std::vector<Text> file = {Text(header)};
    for (int step = 1; step <= speedStepCount; ++step) {
        const int cv = cvOfSpeedStep(step);
        file.push_back(joined({textFromNumber(cv), u";", table.at(cv, Column::value), u";",
                               asField(table.at(cv, Column::text))}));
    }
    return contentOfLines(file);
}

std::variant<BasedSpeedTable, int> parseBasedSpeedTable(std::span<const std::uint8_t> content)
{
    BasedSpeedTable table;
    std::vector<std::pair<int, int*>> places = {{baseSpeedCv, &table.base}, {topSpeedCv, &table.top}};
    for (int step = 1; step <= speedStepCount; ++step)
        places.emplace_back(cvOfSpeedStep(step), &table.steps[static_cast<std::size_t>(step - 1)]);
    const auto lines = linesOf(content);
    std::size_t place = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (isBlank(lines[i]))
            continue;
        const auto value = valueOf(lines[i]);
        if (place == places.size() || !value || !isRecordOf(lines[i], places[place].first))
            return static_cast<int>(i) + 1;
        *places[place++].second = *value;
    }
    if (place < places.size())
        return static_cast<int>(lines.size()) + 1;
    return table;
}

} // namespace karvo
