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

} // namespace

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
