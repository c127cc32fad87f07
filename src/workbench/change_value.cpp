#include "workbench/change_value.h"

#include "cvdata/changes.h"
#include "workbench/put_on_bench.h"

namespace karvo
{

namespace
{

bool isInList(const CvSet& set, int cv)
{
    return !set.isEmpty() && cv >= 1 && cv <= CvTable::lastRow && set.table.describes(cv);
}

void reportOutsideLimits(Prompts& prompts, const LanguageTables& texts, int cv, TextView typed,
                         const ValueLimits& limits)
{
    const Text value(trimmed(typed));
    const Text number = textFromNumber(cv);
    const Text lower = textFromNumber(limits.lower);
    const Text upper = textFromNumber(limits.upper);
    prompts.message(value.empty() ? texts.message(Message::valueMissing, {number, lower, upper})
                                  : texts.message(Message::outsideLimits, {number, value, lower, upper}),
                    PromptIcon::warning);
}

ChangeEnd reportNotInList(Prompts& prompts, const LanguageTables& texts)
{
    prompts.message(texts.caption(Caption::cvNotInList), PromptIcon::warning);
    return ChangeEnd::notInList;
}

void takeValue(Workbench& bench, int cv, int value)
{
    CvSet& set = bench.state.set;
    if (set.table.value(cv) != value) {
        set.table.setValue(cv, value);
        noteChange(set);
    }
    fillList(bench);
}

} // namespace

ChangeEnd changeValue(Workbench& bench, int cv, TextView typed)
{
    CvSet& set = bench.state.set;
    if (bench.state.lineBusy)
        return ChangeEnd::busy;
    if (!isInList(set, cv))
        return reportNotInList(bench.prompts, bench.state.texts);
    const auto value = numberFromText(typed);
    const auto limits = limitsOf(set.table, cv);
    if (!value || !limits.allow(*value)) {
        reportOutsideLimits(bench.prompts, bench.state.texts, cv, typed, limits);
        return ChangeEnd::outsideLimits;
    }
    takeValue(bench, cv, *value);
    return ChangeEnd::changed;
}

ChangeEnd takeValueForWrite(Workbench& bench, int cv, int value)
{
    if (bench.state.lineBusy)
        return ChangeEnd::busy;
    if (!isInList(bench.state.set, cv))
        return reportNotInList(bench.prompts, bench.state.texts);
    takeValue(bench, cv, value);
    return ChangeEnd::changed;
}

ChangeEnd changeValue(Workbench& bench, int cv, int value)
{
    return changeValue(bench, cv, textFromNumber(value));
}

bool takeBackValue(Workbench& bench, int cv)
{
    if (bench.state.lineBusy || !takeBack(bench.state.set, cv))
        return false;
    fillList(bench);
    return true;
}

bool takeBackAllValues(Workbench& bench)
{
    if (bench.state.lineBusy || !takeBackAll(bench.state.set))
        return false;
    fillList(bench);
    return true;
}

} // namespace karvo
