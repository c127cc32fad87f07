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
        return line == speedStepSectionStart || line == cvSectionEnd;
    };
    const auto end = std::find_if(lines.begin() + 2, lines.end(), endsRows);
    return static_cast<int>(end - lines.begin()) - 2;
}

// Returns whether the line describes its row.
bool takeRow(Description& description, int row)
{
    const int line = row + 1;
    const auto fields = fieldsOf(description.lines[static_cast<std::size_t>(line)]);
    if (fields.empty())
        return false;
    if (numberFromText(fields.front()) != row) {
        description.faults.push_back({Kind::wrongRow, line});
        return false;
    }
    if (fields.size() > CvTable::lastColumn)
        description.faults.push_back({Kind::tooManyFields, line});
    const auto kept = std::min<std::size_t>(fields.size(), CvTable::lastColumn);
    for (std::size_t i = 0; i < kept; ++i)
        description.table.at(row, static_cast<int>(i) + 1) = withLineBreaks(fields[i]);
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
    bool anyRow = false;
    for (int row = 1; row <= std::min(description.rowCount, CvTable::lastRow); ++row)
        anyRow = takeRow(description, row) || anyRow;
    if (description.rowCount > CvTable::lastRow)
        description.faults.push_back({Kind::rowBeyondTable, CvTable::lastRow + 2});
    if (!anyRow)
        return std::nullopt;
    return description;
}

} // namespace karvo
