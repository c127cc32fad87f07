#include "editors/step_edit.h"

#include "cvdata/changes.h"
#include "cvdata/speed_cvs.h"
#include "editors/list_rows.h"
#include "workbench/put_on_bench.h"
#include "workbench/steps_outside.h"

#include <algorithm>

namespace karvo
{

namespace
{

// A list of other hands may know no limits: the editor has some of its own.
ValueLimits limitsOfStep(const CvSet& set, int step)
{
    const auto limits = limitsOf(set.table, cvOfSpeedStep(step));
    return {std::max(limits.lower, lowestSpeed), std::min(limits.upper, highestSpeed(set.profile))};
}

std::vector<StepOutside> stepsOutside(const CvSet& set, const std::vector<int>& steps)
{
    std::vector<StepOutside> outside;
    for (const int step : steps) {
        const auto value = set.table.value(cvOfSpeedStep(step));
        const auto limits = limitsOfStep(set, step);
        if (value && !limits.allow(*value))
            outside.push_back({step, *value, limits});
    }
    return outside;
}

} // namespace

SpeedTable speedTableOf(const CvTable& table)
{
    SpeedTable values{};
    for (int step = 1; step <= speedStepCount; ++step)
        values[static_cast<std::size_t>(step - 1)] = table.value(cvOfSpeedStep(step)).value_or(0);
    return values;
}

SpeedTable speedTableOf(const CvImage& image)
{
    SpeedTable values{};
    for (int step = 1; step <= speedStepCount; ++step)
        values[static_cast<std::size_t>(step - 1)] = image[static_cast<std::size_t>(cvOfSpeedStep(step))];
    return values;
}

void tellStepsOutside(Workbench& bench, const Text& heading, const std::vector<int>& steps)
{
    const auto outside = stepsOutside(bench.state.set, steps);
    if (outside.empty())
        return;
    const LanguageTables& texts = bench.state.texts;
    bench.prompts.message(heading + Text(lineBreak) + stepsOutsideText(outside, texts) + Text(lineBreak) +
                              texts.message(Message::stepsOutsideTaken),
                          PromptIcon::warning);
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
    std::vector<int> steps;
    for (int step = 1; step <= speedStepCount; ++step) {
        const auto place = static_cast<std::size_t>(step - 1);
        if (!changed_[place])
            continue;
        cv_uebernehmen(set.list, listRowOfStep(set.list, step), shown_[place]);
        changed_[place] = false;
        taken_[place] = shown_[place];
        if (set.table.describes(cvOfSpeedStep(step)))
            set.table.setValue(cvOfSpeedStep(step), shown_[place]);
        steps.push_back(step);
    }
    takeBase(set.table);
    if (steps.empty())
        return 0;
    noteChange(set);
    fillList(bench);
    tellStepsOutside(bench, bench.state.texts.message(Message::stepsOutsideLimits), steps);
    return static_cast<int>(steps.size());
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
