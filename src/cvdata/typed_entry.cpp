#include "cvdata/typed_entry.h"

#include "cvdata/cv_use.h"

namespace karvo
{

bool isNoNumber(TextView typed)
{
    return trimmed(typed).empty() || numberFromText(typed) == 0;
}

int cvOfNumber(const CvSet& set, TextView typed)
{
    const auto number = numberFromText(typed);
    return number && positionOf(set.list, *number) ? *number : 0;
}

bool canBeTaken(const CvSet& set, const TypedEntry& entry)
{
    const bool named = entry.number && !isNoNumber(*entry.number);
    const int cv = named ? cvOfNumber(set, *entry.number) : set.currentNumber;
    if (named && cv == 0)
        return false;
    if (!entry.value)
        return true;
    const auto value = numberFromText(*entry.value);
    return cv != 0 && value && limitsOf(set.table, cv).allow(*value);
}

} // namespace karvo
