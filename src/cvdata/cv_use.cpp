#include "cvdata/cv_use.h"

#include "cvdata/cv_kind.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int lowestValue = 0;
constexpr int highestValue = 255;
constexpr int firmwareCv = 7;
constexpr int makerCv = 8;
constexpr TextView readOnlyMark = u"read-only";
constexpr TextView fromMark = u"from=";

bool tellsWhatIsUsed(const CvTable& table)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (!table.at(cv, Column::factoryValue).empty())
            return true;
    }
    return false;
}

// What follows the beginning of the mark that begins so; nothing without such a mark. Marks are separated by
// commas.
std::optional<TextView> markThatBegins(TextView field, TextView beginning)
{
    if (!field.starts_with(markPrefix))
        return std::nullopt;
    for (auto end = markPrefix.size() - 1; end != TextView::npos; end = field.find(u',')) {
        field.remove_prefix(end + 1);
        const TextView mark = trimmed(field.substr(0, field.find(u',')));
        if (mark.starts_with(beginning))
            return mark.substr(beginning.size());
    }
    return std::nullopt;
}

} // namespace

ValueLimits limitsOf(const CvTable& table, int cv)
{
    const auto limit = [&](Column column, int unknown) {
        return std::clamp(numberFromText(table.at(cv, column)).value_or(unknown), lowestValue, highestValue);
    };
    return {limit(Column::lowerLimit, lowestValue), limit(Column::upperLimit, highestValue)};
}

bool isUsed(const CvTable& table, int cv)
{
    return table.describes(cv) && (!table.at(cv, Column::factoryValue).empty() || !tellsWhatIsUsed(table));
}

std::optional<int> unusedCvOf(const CvTable& table)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (table.describes(cv) && !isUsed(table, cv))
            return cv;
    }
    return std::nullopt;
}

bool isReadOnly(const CvTable& table, int cv)
{
    const auto rest = markThatBegins(table.at(cv, Column::marks), readOnlyMark);
    return cv == firmwareCv || cv == makerCv || (rest && rest->empty());
}

TextView firstFirmwareOf(const CvTable& table, int cv)
{
    return markThatBegins(table.at(cv, Column::marks), fromMark).value_or(TextView());
}

} // namespace karvo
