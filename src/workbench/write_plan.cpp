#include "workbench/write_plan.h"

#include "cvdata/cv_use.h"
#include "cvdata/main_list.h"
#include "link/series_write.h"

#include <algorithm>
#include <functional>

namespace karvo
{

namespace
{

// Behind all others, in this order.
constexpr int lastToWrite[] = {1, 3, 15, 16, 17, 18, 29, 161};

int rankOf(int cv)
{
    if (cv == resetCv)
        return -1;
    const auto* const found = std::find(std::begin(lastToWrite), std::end(lastToWrite), cv);
    return found == std::end(lastToWrite) ? 0 : 1 + static_cast<int>(found - std::begin(lastToWrite));
}

void putInOrder(WritePlan& plan)
{
    std::sort(plan.begin(), plan.end(), [](const PlannedWrite& a, const PlannedWrite& b) {
        return std::pair(rankOf(a.cv), a.cv) < std::pair(rankOf(b.cv), b.cv);
    });
}

WriteSkip skipOf(const CvTable& table, int cv)
{
    if (!isUsed(table, cv))
        return WriteSkip::notUsed;
    if (isReadOnly(table, cv))
        return WriteSkip::decodersOwn;
    if (cv == resetCv)
        return WriteSkip::reset;
    const auto value = table.value(cv);
    return value && !limitsOf(table, cv).allow(*value) ? WriteSkip::outsideLimits : WriteSkip::none;
}

bool hasValue(const CvTable& table, int cv)
{
    return table.describes(cv) && isCvValue(table.value(cv));
}

bool isSeriesCv(int cv)
{
    return cv >= firstSeriesCv && cv <= lastSeriesCv;
}

bool canWriteSeries(const CvTable& table)
{
    for (int cv = firstSeriesCv; cv <= lastSeriesCv; ++cv) {
        if (!hasValue(table, cv) || skipOf(table, cv) != WriteSkip::none)
            return false;
    }
    return true;
}

WritePlan planOf(const CvTable& table, const std::function<bool(int)>& isWanted)
{
    bool wantsSeries = false;
    for (int cv = firstSeriesCv; cv <= lastSeriesCv; ++cv)
        wantsSeries = wantsSeries || isWanted(cv);
    const bool wholeSeries = wantsSeries && canWriteSeries(table);
    WritePlan plan;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const bool withSeries = wholeSeries && isSeriesCv(cv);
        if (hasValue(table, cv) && (withSeries || isWanted(cv)))
            plan.push_back({cv, *table.value(cv)});
    }
    putInOrder(plan);
    return plan;
}

void holdBackOtherSteps(WritePlan& plan)
{
    const bool anyOutside = std::any_of(plan.begin(), plan.end(), [](const PlannedWrite& write) {
        return isSpeedStepCv(write.cv) && write.skip == WriteSkip::outsideLimits;
    });
    for (PlannedWrite& write : plan) {
        if (anyOutside && isSpeedStepCv(write.cv) && write.skip == WriteSkip::none)
            write.skip = WriteSkip::otherSteps;
    }
}

void markSkipped(WritePlan& plan, const CvTable& table)
{
    for (PlannedWrite& write : plan)
        write.skip = skipOf(table, write.cv);
    holdBackOtherSteps(plan);
}

} // namespace

WritePlan planOfDifferences(const CvTable& table, const CvImage& block)
{
    auto plan = planOf(table, [&](int cv) { return table.value(cv) != block[static_cast<std::size_t>(cv)]; });
    markSkipped(plan, table);
    return plan;
}

WritePlan planOfAll(const CvTable& table)
{
    auto plan = planOf(table, [](int) { return true; });
    markSkipped(plan, table);
    return plan;
}

WritePlan planOfChosen(const CvTable& table, const std::vector<int>& cvs)
{
    return planOf(table, [&](int cv) { return std::find(cvs.begin(), cvs.end(), cv) != cvs.end(); });
}

bool lacksPlannedServoCv(const WritePlan& plan)
{
    return std::any_of(plan.begin(), plan.end(), [](const PlannedWrite& write) {
        return isServoCv(write.cv) && write.skip == WriteSkip::notUsed;
    });
}

} // namespace karvo
