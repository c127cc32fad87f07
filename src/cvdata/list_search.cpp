#include "cvdata/list_search.h"

namespace karvo
{

namespace
{

bool holds(TextView text, TextView lowerWord)
{
    return lowerCase(text).find(lowerWord) != Text::npos;
}

bool lineHolds(const ListLine& line, const CvTable& table, TextView lowerWord)
{
    if (holds(line.text, lowerWord) || holds(line.name, lowerWord))
        return true;
    if (line.cv == 0)
        return false;
    for (const Column column :
         {Column::text, Column::explanation, Column::values, Column::advice, Column::bits}) {
        if (holds(table.at(line.cv, column), lowerWord))
            return true;
    }
    return false;
}

} // namespace

std::optional<std::size_t> nextLineWith(const MainList& list, const CvTable& table, TextView word,
                                        std::optional<std::size_t> after)
{
    const Text lowerWord = lowerCase(trimmed(word));
    if (lowerWord.empty())
        return std::nullopt;
    const std::size_t first = after ? *after + 1 : 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::size_t candidate = (first + i) % list.size();
        if (lineHolds(list[candidate], table, lowerWord))
            return candidate;
    }
    return std::nullopt;
}

} // namespace karvo
