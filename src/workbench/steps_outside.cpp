#include "workbench/steps_outside.h"

#include "cvdata/main_list.h"
#include "cvdata/speed_cvs.h"

#include <algorithm>
#include <map>
#include <utility>

namespace karvo
{

namespace
{

bool isHeldBack(const PlannedWrite& write)
{
    return isSpeedStepCv(write.cv) &&
           (write.skip == WriteSkip::outsideLimits || write.skip == WriteSkip::otherSteps);
}

} // namespace

std::optional<StepOutside> stepOutside(const CvTable& table, int cv, int value)
{
    const bool isOne = isSpeedStepCv(cv) && hasSpeedTable(table) &&
                       limitsAgainst(table, cv, value) == WriteSkip::outsideLimits;
    return isOne ? std::optional(StepOutside{cvOfSpeedStep(cv), value, limitsOf(table, cv)}) : std::nullopt;
}

std::vector<StepOutside> stepsOutside(const WritePlan& plan, const CvTable& table)
{
    std::vector<StepOutside> steps;
    for (const PlannedWrite& write : plan) {
        const auto step = stepOutside(table, write.cv, write.value);
        if (step && write.skip == WriteSkip::outsideLimits)
            steps.push_back(*step);
    }
    return steps;
}

Text stepsOutsideText(std::vector<StepOutside> steps, const LanguageTables& texts)
{
    std::sort(steps.begin(), steps.end(),
              [](const StepOutside& one, const StepOutside& other) { return one.step < other.step; });
    std::map<std::pair<int, int>, Text> byLimits;
    for (const StepOutside& one : steps) {
        Text& named = byLimits[{one.limits.lower, one.limits.upper}];
        named +=
            (named.empty() ? u"" : u", ") + textFromNumber(one.step) + u" = " + textFromNumber(one.value);
    }
    Text text;
    for (const auto& [limits, named] : byLimits) {
        text += Text(lineBreak) +
                texts.message(Message::stepsOutsideLine,
                              {textFromNumber(limits.first), textFromNumber(limits.second), named});
    }
    return text.erase(0, lineBreak.size());
}

void askAboutStepsOutside(Workbench& bench, WritePlan& plan)
{
    const auto steps = stepsOutside(plan, bench.state.set.table);
    if (steps.empty())
        return;
    const LanguageTables& texts = bench.state.texts;
    const Text question = texts.message(Message::stepsOutsideLimits) + Text(lineBreak) +
                          stepsOutsideText(steps, texts) + Text(lineBreak) +
                          texts.message(Message::writeStepsOutsideQuestion);
    if (!bench.prompts.question(question, QuestionKind::limits))
        return;
    for (PlannedWrite& write : plan) {
        if (isHeldBack(write))
            write.skip = WriteSkip::none;
    }
}

} // namespace karvo
