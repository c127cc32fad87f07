#include "cvdata/description_file.h"

#include "cvdata/description_fields.h"
#include "program/text_lines.h"

#include <algorithm>

namespace karvo
{

namespace
{

using Kind = DescriptionFault::Kind;

int rowsBeforeSection(const std::vector<Text>& lines)
{
    const auto endsRows = [](const Text& line) {
        return trimmed(line) == speedStepSectionStart || trimmed(line) == cvSectionEnd;
    };
    const auto end = std::find_if(lines.begin() + 2, lines.end(), endsRows);
    return static_cast<int>(end - lines.begin()) - 2;
}

// Which row the fields are for. Row k stands in line k + 1; where the lines of a file that was edited have
// moved, the CV number tells. Nothing, with the fault noted, when it does not.
std::optional<int> rowOf(const std::vector<TextView>& fields, int line, Description& description)
{
    const auto row = fields.empty() ? std::nullopt : numberFromText(fields.front());
    if (row && *row > CvTable::lastRow)
        description.faults.push_back({Kind::rowBeyondTable, line});
    else if (!row || *row < 1 || description.table.describes(*row))
        description.faults.push_back({Kind::wrongRow, line});
    else
        return row;
    return std::nullopt;
}

// A value that no CV can have would be shown and kept as if it were one.
void dropWrongValue(Description& description, int row, int line)
{
    Text& value = description.table.at(row, Column::value);
    if (trimmed(value).empty() || isCvValue(numberFromText(value)))
        return;
    value.clear();
    description.faults.push_back({Kind::wrongValue, line});
}

// Returns whether the line describes a CV.
bool takeLine(Description& description, int line)
{
    const Text& source = description.lines[static_cast<std::size_t>(line)];
    const auto fields = fieldsOf(source);
    const auto place = rowOf(fields, line, description);
    if (!place)
        return false;
    const int row = *place;
    if (fields.size() > CvTable::lastColumn)
        description.faults.push_back({Kind::tooManyFields, line});
    const auto kept = std::min<std::size_t>(fields.size(), CvTable::lastColumn);
    for (std::size_t i = 0; i < kept; ++i)
        description.table.at(row, static_cast<int>(i) + 1) = withLineBreaks(fields[i]);
    dropWrongValue(description, row, line);
    return true;
}

} // namespace

std::optional<Description> parseDescription(std::span<const std::uint8_t> content)
{
    Description description;
    description.lines = linesOf(content);
    description.lines.insert(description.lines.begin(), Text());
    if (description.lines.size() < 2)
        return std::nullopt;
    if (description.lines.size() > descriptionLineLimit) {
        description.lines.resize(descriptionLineLimit);
        description.faults.push_back({Kind::tooManyLines, static_cast<int>(descriptionLineLimit)});
    }
    description.rowCount = rowsBeforeSection(description.lines);
    const int lineCount = static_cast<int>(description.lines.size()) - 1;
    if (description.rowCount + 1 == lineCount && description.faults.empty())
        description.faults.push_back({Kind::noEnd, lineCount});
    bool anyRow = false;
    for (int line = 2; line < description.rowCount + 2; ++line)
        anyRow = takeLine(description, line) || anyRow;
    if (!anyRow)
        return std::nullopt;
    return description;
}

} // namespace karvo
