#include "cvdata/cv_use.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int lowestValue = 0;
constexpr int highestValue = 255;
constexpr int firmwareCv = 7;
constexpr int makerCv = 8;
constexpr TextView markPrefix = u"mark=";
constexpr TextView readOnlyMark = u"read-only";

bool tellsWhatIsUsed(const CvTable& table)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (!table.at(cv, Column::factoryValue).empty())
            return true;
    }
    return false;
}

// Marks are separated by commas.
bool hasMark(TextView field, TextView wanted)
{
    if (field.substr(0, markPrefix.size()) != markPrefix)
        return false;
    field.remove_prefix(markPrefix.size());
    for (;;) {
        const auto end = field.find(u',');
        if (trimmed(field.substr(0, end)) == wanted)
            return true;
        if (end == TextView::npos)
            return false;
        field.remove_prefix(end + 1);
    }
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

bool isReadOnly(const CvTable& table, int cv)
{
    return cv == firmwareCv || cv == makerCv || hasMark(table.at(cv, Column::marks), readOnlyMark);
}

} // namespace karvo
