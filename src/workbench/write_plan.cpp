#include "workbench/write_plan.h"

#include "cvdata/cv_use.h"
#include "cvdata/dcc_address.h"
#include "cvdata/main_list.h"
#include "cvdata/receiver_releases.h"
#include "cvdata/speed_cvs.h"
#include "link/write.h"

#include <algorithm>
#include <functional>
#include <span>

namespace karvo
{

namespace
{

// Behind all others, in this order.
constexpr int lastToWrite[] = {1, 3, 15, 16, 17, 18, 29, 21, 161};

constexpr int vehicleSwitches[] = {102, 108, 112};
constexpr int receiverSwitches[] = {9, 30};

int rankOf(Model model, const PlannedWrite& write)
{
    if (write.cv == resetCv)
        return -2;
    if (isActingSwitch(model, write.cv))
        return write.value == 0 ? -1 : 1;
    const auto* const found = std::find(std::begin(lastToWrite), std::end(lastToWrite), write.cv);
    return found == std::end(lastToWrite) ? 0 : 2 + static_cast<int>(found - std::begin(lastToWrite));
}

void putInOrder(WritePlan& plan, Model model)
{
    std::sort(plan.begin(), plan.end(), [model](const PlannedWrite& a, const PlannedWrite& b) {
        return std::pair(rankOf(model, a), a.cv) < std::pair(rankOf(model, b), b.cv);
    });
}

bool hasValue(const CvTable& table, int cv)
{
    return table.describes(cv) && isCvValue(table.value(cv));
}

bool isSeriesCv(int cv)
{
    return cv >= firstSeriesCv && cv <= lastSeriesCv;
}

bool hasWholeSeries(const CvTable& table)
{
    for (int cv = firstSeriesCv; cv <= lastSeriesCv; ++cv) {
        if (!hasValue(table, cv) || !isUsed(table, cv) || isReadOnly(table, cv))
            return false;
    }
    return true;
}

WritePlan planOf(const CvSet& set, const std::function<bool(int)>& isWanted)
{
    const CvTable& table = set.table;
    bool wantsSeries = false;
    for (int cv = firstSeriesCv; cv <= lastSeriesCv; ++cv)
        wantsSeries = wantsSeries || isWanted(cv);
    const bool wholeSeries = wantsSeries && hasWholeSeries(table);
    WritePlan plan;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const bool withSeries = wholeSeries && isSeriesCv(cv);
        if (hasValue(table, cv) && (withSeries || isWanted(cv)))
            plan.push_back({cv, *table.value(cv)});
    }
    putInOrder(plan, set.profile.model);
    return plan;
}

void holdBackOtherSteps(WritePlan& plan, const CvTable& table)
{
    if (!hasSpeedTable(table))
        return;
    const bool anyOutside = std::any_of(plan.begin(), plan.end(), [](const PlannedWrite& write) {
        return isSpeedStepCv(write.cv) && write.skip == WriteSkip::outsideLimits;
    });
    for (PlannedWrite& write : plan) {
        if (anyOutside && isSpeedStepCv(write.cv) && write.skip == WriteSkip::none)
            write.skip = WriteSkip::otherSteps;
    }
}

void markSkipped(WritePlan& plan, const CvTable& table, BeyondLimits beyond)
{
    for (PlannedWrite& write : plan) {
        if (write.cv == resetCv)
            write.skip = WriteSkip::reset;
        else if (beyond == BeyondLimits::leftOut)
            write.skip = limitsAgainst(table, write.cv, write.value);
    }
}

void keepSeriesTogether(WritePlan& plan, const CvTable& table)
{
    const bool isTorn = std::any_of(plan.begin(), plan.end(), [](const PlannedWrite& write) {
        return isSeriesCv(write.cv) && write.skip != WriteSkip::none;
    });
    if (!isTorn || !hasWholeSeries(table))
        return;
    for (PlannedWrite& write : plan) {
        if (isSeriesCv(write.cv) && write.skip == WriteSkip::none)
            write.skip = WriteSkip::withSeries;
    }
}

bool plans(const WritePlan& plan, int cv)
{
    return std::any_of(plan.begin(), plan.end(), [cv](const PlannedWrite& write) { return write.cv == cv; });
}

// A receiver goes on using the old address of a servo until it is told to take the new one over.
void addTakeOvers(WritePlan& plan, const CvSet& set)
{
    for (std::size_t i = 0, count = plan.size(); i < count; ++i) {
        const int cv = takeOverCvOf(plan[i].cv);
        if (cv != 0 && isUsed(set.table, cv) && !plans(plan, cv))
            plan.push_back({cv, takeOverValue});
    }
    putInOrder(plan, set.profile.model);
}

WritePlan planFromList(const CvSet& set, const CvImage& block, BeyondLimits beyond,
                       const std::function<bool(int)>& isWanted)
{
    const CvTable& table = set.table;
    auto plan = planOf(set, isWanted);
    addTakeOvers(plan, set);
    for (PlannedWrite& write : plan)
        write.held = block[static_cast<std::size_t>(write.cv)];
    markSkipped(plan, table, beyond);
    holdBackOtherSteps(plan, table);
    keepSeriesTogether(plan, table);
    return plan;
}

} // namespace

bool isActingSwitch(Model model, int cv)
{
    const std::span<const int> switches =
        isReceiver(model) ? std::span<const int>(receiverSwitches) : vehicleSwitches;
    return std::find(switches.begin(), switches.end(), cv) != switches.end();
}

WriteSkip limitsAgainst(const CvTable& table, int cv, int value)
{
    if (cv == resetCv)
        return WriteSkip::none;
    if (!isUsed(table, cv))
        return WriteSkip::notUsed;
    if (isReadOnly(table, cv))
        return WriteSkip::decodersOwn;
    return limitsOf(table, cv).allow(value) ? WriteSkip::none : WriteSkip::outsideLimits;
}

WritePlan planOfDifferences(const CvSet& set, const CvImage& block, BeyondLimits beyond)
{
    return planFromList(set, block, beyond,
                        [&](int cv) { return set.table.value(cv) != block[static_cast<std::size_t>(cv)]; });
}

WritePlan planOfAll(const CvSet& set, const CvImage& block, BeyondLimits beyond)
{
    return planFromList(set, block, beyond, [](int) { return true; });
}

void leaveOutWhatItLacks(WritePlan& plan, const CvTable& table, const DecoderProfile& vehicle)
{
    for (PlannedWrite& write : plan) {
        if (write.skip == WriteSkip::none && lacksCv(vehicle, table, write.cv))
            write.skip = WriteSkip::notUsed;
    }
}

WritePlan planOfChosen(const CvSet& set, const std::vector<int>& cvs)
{
    return planOf(set, [&](int cv) { return std::find(cvs.begin(), cvs.end(), cv) != cvs.end(); });
}

WritePlan planOfValues(CvSet set, const std::vector<CvChange>& values)
{
    std::vector<int> cvs;
    for (const CvChange& one : values) {
        set.table.setValue(one.cv, one.value);
        cvs.push_back(one.cv);
    }
    auto plan = planOfChosen(set, cvs);
    addTakeOvers(plan, set);
    return plan;
}

WritePlan restOf(WritePlan plan, const std::vector<int>& cvs)
{
    for (const int cv : cvs) {
        if (isTakeOverCv(cv) && !plans(plan, cv))
            plan.push_back({cv, takeOverValue});
    }
    const bool withSeries = std::any_of(cvs.begin(), cvs.end(), isSeriesCv);
    std::erase_if(plan, [&](const PlannedWrite& write) {
        const bool isWanted = std::find(cvs.begin(), cvs.end(), write.cv) != cvs.end();
        const bool isOfAddress = isAddressPart(write.cv) || takeOverCvOf(write.cv) != 0;
        const bool holdsBack = isOfAddress && write.skip != WriteSkip::none;
        return !isWanted && !holdsBack && !(withSeries && isSeriesCv(write.cv));
    });
    return plan;
}

bool lacksPlannedServoCv(const WritePlan& plan)
{
    return std::any_of(plan.begin(), plan.end(), [](const PlannedWrite& write) {
        return isServoCv(write.cv) && write.skip == WriteSkip::notUsed;
    });
}

} // namespace karvo
