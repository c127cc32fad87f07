#include "cvdata/changes.h"

namespace karvo
{

namespace
{

bool isInTable(int cv)
{
    return cv >= 1 && cv <= CvTable::lastRow;
}

CvValues valuesOf(const CvTable& table)
{
    CvValues values;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv)
        values[static_cast<std::size_t>(cv)] = table.at(cv, Column::value);
    return values;
}

// Not of a file: what was saved in between may be what has been taken back since.
bool isAsItCame(const CvSet& set)
{
    return set.baseline && set.listPath.empty() && changedCvs(set).empty();
}

} // namespace

bool isChanged(const CvTable& table, const CvValues& baseline, int cv)
{
    if (!isInTable(cv))
        return false;
    const Text& value = table.at(cv, Column::value);
    const Text& before = baseline[static_cast<std::size_t>(cv)];
    if (value == before)
        return false;
    const auto number = numberFromText(value);
    return !number || number != numberFromText(before);
}

bool isChanged(const CvSet& set, int cv)
{
    return set.baseline && isChanged(set.table, *set.baseline, cv);
}

std::vector<int> changedCvs(const CvSet& set)
{
    std::vector<int> cvs;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (isChanged(set, cv))
            cvs.push_back(cv);
    }
    return cvs;
}

void startUnchanged(CvSet& set)
{
    set.baseline = valuesOf(set.table);
    set.unsavedChanges = false;
    set.acceptedVehicle.reset();
    set.precedesUpdate = false;
}

void measureAgainst(CvSet& set, const CvImage& image)
{
    CvValues held = valuesOf(set.table);
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const auto index = static_cast<std::size_t>(cv);
        if (set.table.value(cv))
            held[index] = textFromNumber(image[index]);
    }
    set.baseline = std::move(held);
}

void noteChange(CvSet& set)
{
    set.unsavedChanges = !isAsItCame(set);
}

void markWritten(CvSet& set, int cv)
{
    if (set.baseline && isInTable(cv))
        (*set.baseline)[static_cast<std::size_t>(cv)] = set.table.at(cv, Column::value);
    if (!set.isOffline() && isAsItCame(set))
        set.unsavedChanges = false;
}

bool takeBack(CvSet& set, int cv)
{
    if (!isChanged(set, cv))
        return false;
    set.table.at(cv, Column::value) = (*set.baseline)[static_cast<std::size_t>(cv)];
    noteChange(set);
    return true;
}

bool takeBackAll(CvSet& set)
{
    bool any = false;
    for (const int cv : changedCvs(set))
        any = takeBack(set, cv) || any;
    return any;
}

} // namespace karvo
