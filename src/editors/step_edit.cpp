#include "editors/step_edit.h"

#include "cvdata/changes.h"
#include "editors/list_rows.h"
#include "workbench/describe.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int baseSpeedCv = 2;
constexpr int topSpeedCv = 5;

} // namespace

SpeedTable speedTableOf(const CvTable& table)
{
    SpeedTable values{};
    for (int step = 1; step <= speedStepCount; ++step)
        values[static_cast<std::size_t>(step - 1)] = table.value(cvOfSpeedStep(step)).value_or(0);
    return values;
}

SpeedTable speedTableOf(std::span<const std::uint8_t> reply)
{
    SpeedTable values{};
    std::copy_n(reply.begin(), std::min(reply.size(), values.size()), values.begin());
    return values;
}

void StepEdit::setStep(int step, int value)
{
    const auto place = static_cast<std::size_t>(step - 1);
    changed_[place] = changed_[place] || shown_[place] != value;
    shown_[place] = value;
}

void StepEdit::fill(const SpeedTable& values)
{
    shown_ = values;
    generated_ = true;
    base_.reset();
}

void StepEdit::fill(const BasedSpeedTable& table)
{
    fill(table.steps);
    base_ = table;
}

void StepEdit::reset()
{
    shown_ = taken_;
    changed_.fill(false);
    generated_ = false;
    base_.reset();
}

int StepEdit::Uebernehmen(Workbench& bench)
{
    CvSet& set = bench.state.set;
    if (generated_)
        changed_.fill(true);
    generated_ = false;
    int count = 0;
    for (int step = 1; step <= speedStepCount; ++step) {
        const auto place = static_cast<std::size_t>(step - 1);
        if (!changed_[place])
            continue;
        cv_uebernehmen(set.list, listRowOfStep(set.list, step), shown_[place]);
        changed_[place] = false;
        taken_[place] = shown_[place];
        if (set.table.describes(cvOfSpeedStep(step)))
            set.table.setValue(cvOfSpeedStep(step), shown_[place]);
        ++count;
    }
    takeBase(set.table);
    if (count == 0)
        return count;
    noteChange(set);
    fillList(bench);
    return count;
}

void StepEdit::takeBase(CvTable& table)
{
    if (!base_)
        return;
    for (const auto& [cv, value] : {std::pair{baseSpeedCv, base_->base}, {topSpeedCv, base_->top}}) {
        if (table.describes(cv))
            table.setValue(cv, value);
    }
    base_.reset();
}

} // namespace karvo
