#include "workbench/write_many.h"

#include "cvdata/changes.h"
#include "link/read.h"
#include "workbench/line_use.h"
#include "workbench/put_on_bench.h"
#include "workbench/steps_outside.h"
#include "workbench/write_guard.h"
#include "workbench/write_run.h"

namespace karvo
{

namespace
{

WriteReport without(WriteManyEnd end)
{
    return {end, {}};
}

// What the vehicle holds is what the list's values are changes of.
void takeHeldValues(ProgramState& state, const DecoderBlock& block)
{
    state.lastRead = block;
    state.image = block.image;
    state.receiver = receiverValuesOf(state.link.typeCode, state.image);
    measureAgainst(state.set, state.image);
}

void refuseMissingServoCvs(Prompts& prompts, const LanguageTables& texts, const WritePlan& plan)
{
    if (lacksPlannedServoCv(plan))
        prompts.message(texts.message(Message::lacksServoCvs), PromptIcon::warning);
}

void takePlannedValues(CvSet& set, const WritePlan& plan)
{
    for (const PlannedWrite& write : plan) {
        const bool isOrder = isTakeOverCv(write.cv); // no value that the decoder keeps
        if (isOrder || !set.table.describes(write.cv) || set.table.value(write.cv) == write.value)
            continue;
        set.table.setValue(write.cv, write.value);
        noteChange(set);
    }
}

// Shows what will be written. Nothing when the person has cancelled.
std::optional<WritePlan> confirmed(ProgramState& state, const WritePlan& plan, const DecoderBlock& block,
                                   const ConfirmPlan& confirm)
{
    return confirmPlan(state, plan, previewOf(plan, state.set, block.image, block.profile), confirm,
                       isKept(state, block));
}

WriteReport cancelled(Workbench& bench)
{
    fillList(bench); // what differs from the vehicle is marked
    bench.view.showStatus(bench.state.texts.caption(Caption::writtenNothing));
    return without(WriteManyEnd::cancelled);
}

enum class Wanted { differences, all };

WriteReport writeAfterRead(Workbench& bench, Wanted wanted, const KeepBackup& keepBackup,
                           const ListWrite& how)
{
    if (bench.state.set.isEmpty())
        return without(WriteManyEnd::nothingToWrite);
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return without(WriteManyEnd::busy);
    WriteGuard guard(bench, keepBackup);
    if (const auto end = guard.meetVehicle(BlockUse::plan))
        return without(*end);
    takeHeldValues(bench.state, *guard.block());
    const CvSet& set = bench.state.set;
    const CvImage& image = bench.state.image;
    auto plan =
        wanted == Wanted::all ? planOfAll(set, image, how.beyond) : planOfDifferences(set, image, how.beyond);
    if (how.beyond == BeyondLimits::leftOut)
        leaveOutWhatItLacks(plan, set.table, guard.block()->profile);
    if (!how.only.empty())
        plan = restOf(std::move(plan), how.only);
    if (wanted == Wanted::differences)
        refuseMissingServoCvs(bench.prompts, bench.state.texts, plan);
    askAboutStepsOutside(bench, plan);
    const auto chosen = confirmed(bench.state, plan, *guard.block(), how.confirm);
    if (!chosen && !plan.empty())
        return cancelled(bench);
    return runPlan(bench, chosen.value_or(WritePlan()), guard, RunKind::many);
}

} // namespace

WriteReport writeChanged(Workbench& bench, const KeepBackup& keepBackup, const ListWrite& how)
{
    return writeAfterRead(bench, Wanted::differences, keepBackup, how);
}

WriteReport writeAll(Workbench& bench, const KeepBackup& keepBackup, const ListWrite& how)
{
    return writeAfterRead(bench, Wanted::all, keepBackup, how);
}

WriteReport writeValues(Workbench& bench, const WritePlan& plan, const KeepBackup& keepBackup)
{
    if (bench.state.set.isEmpty())
        return without(WriteManyEnd::nothingToWrite);
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return without(WriteManyEnd::busy);
    takePlannedValues(bench.state.set, plan);
    WriteGuard guard(bench, keepBackup);
    return runPlan(bench, plan, guard, RunKind::many);
}

WriteReport writeReset(Workbench& bench, int value, const KeepBackup& keepBackup)
{
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return without(WriteManyEnd::busy);
    WriteGuard guard(bench, keepBackup);
    return runPlan(bench, {{resetCv, value}}, guard, RunKind::many);
}

WriteReport writeChosen(Workbench& bench, const std::vector<int>& cvs, const KeepBackup& keepBackup)
{
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return without(WriteManyEnd::busy);
    WriteGuard guard(bench, keepBackup);
    return runPlan(bench, planOfChosen(bench.state.set, cvs), guard, RunKind::many);
}

} // namespace karvo
