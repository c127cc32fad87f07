#include "workbench/write_many.h"

#include "cvdata/changes.h"
#include "link/identification.h"
#include "link/read.h"
#include "link/save_path_read.h"
#include "workbench/describe.h"
#include "workbench/line_use.h"
#include "workbench/steps_outside.h"
#include "workbench/write_run.h"

namespace karvo
{

namespace
{

WriteReport without(WriteManyEnd end)
{
    return {end, {}};
}

std::optional<WriteManyEnd> identifyOnce(Workbench& bench)
{
    if (bench.state.link.identified)
        return std::nullopt;
    Link link = bench.link();
    if (!EnsurePortOpen(link))
        return WriteManyEnd::ended;
    switch (IdentifyDecoder(link, ReadOnlyReceiver::refused)) {
    case IdentificationEnd::ended:
        return WriteManyEnd::ended;
    case IdentificationEnd::timedOut:
        link.port.close();
        reportNoReplyToRead(link);
        return WriteManyEnd::noReply;
    case IdentificationEnd::unknown:
        link.prompts.message(link.texts.message(Message::nothingWritten));
        return WriteManyEnd::unknownDecoder;
    case IdentificationEnd::identified:
        break;
    }
    return std::nullopt;
}

// The XT module is a receiver to the line.
Model modelOnLine(Model model)
{
    return model == Model::xtModule ? Model::receiver : model;
}

bool isOfListsModel(Workbench& bench)
{
    const ProgramState& state = bench.state;
    const Model model = modelOfTypeCode(state.link.typeCode);
    if (modelOnLine(state.set.profile.model) == model)
        return true;
    const Text names[] = {typeText(state.set.profile, state.texts), Text(modelName(model))};
    bench.prompts.message(filledIn(state.texts.message(Message::otherModel), names), PromptIcon::warning);
    return false;
}

std::optional<WriteManyEnd> readHeldValues(Workbench& bench)
{
    ProgramState& state = bench.state;
    Link link = bench.link();
    switch (readForSave(link, state.image)) {
    case ReadEnd::noReply:
        return WriteManyEnd::noReply;
    case ReadEnd::unknownDecoder:
        return WriteManyEnd::unknownDecoder;
    case ReadEnd::wrongCheckByte:
        return WriteManyEnd::wrongCheckByte;
    case ReadEnd::ended:
        return WriteManyEnd::ended;
    case ReadEnd::read:
        break;
    }
    state.receiver = receiverValuesOf(state.link.typeCode, state.image);
    state.unkeptImage = profileOfImage(state);
    measureAgainst(state.set, state.image);
    return std::nullopt;
}

std::optional<WriteManyEnd> whatStandsAgainst(Workbench& bench, const LineUse& line)
{
    if (!line.isGranted())
        return WriteManyEnd::busy;
    if (const auto end = identifyOnce(bench))
        return end;
    return isOfListsModel(bench) ? std::nullopt : std::optional(WriteManyEnd::otherModel);
}

void refuseMissingServoCvs(Workbench& bench, const WritePlan& plan)
{
    if (lacksPlannedServoCv(plan))
        bench.prompts.message(bench.state.texts.message(Message::lacksServoCvs), PromptIcon::warning);
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

enum class Wanted { differences, all };

WriteReport writeAfterRead(Workbench& bench, Wanted wanted, const KeepBackup& keepBackup)
{
    if (bench.state.set.isEmpty())
        return without(WriteManyEnd::nothingToWrite);
    const LineUse line(bench, LineTask::lasting);
    if (const auto end = whatStandsAgainst(bench, line))
        return without(*end);
    if (const auto end = readHeldValues(bench))
        return without(*end);
    const CvTable& table = bench.state.set.table;
    auto plan = wanted == Wanted::all ? planOfAll(table) : planOfDifferences(table, bench.state.image);
    if (wanted == Wanted::differences)
        refuseMissingServoCvs(bench, plan);
    askAboutStepsOutside(bench, plan);
    return runPlan(bench, plan, keepBackup);
}

} // namespace

WriteReport writeChanged(Workbench& bench, const KeepBackup& keepBackup)
{
    return writeAfterRead(bench, Wanted::differences, keepBackup);
}

WriteReport writeAll(Workbench& bench, const KeepBackup& keepBackup)
{
    return writeAfterRead(bench, Wanted::all, keepBackup);
}

WriteReport writeValues(Workbench& bench, const WritePlan& plan, const KeepBackup& keepBackup)
{
    if (bench.state.set.isEmpty())
        return without(WriteManyEnd::nothingToWrite);
    const LineUse line(bench, LineTask::lasting);
    if (const auto end = whatStandsAgainst(bench, line))
        return without(*end);
    takePlannedValues(bench.state.set, plan);
    return runPlan(bench, plan, keepBackup);
}

WriteReport writeChosen(Workbench& bench, const std::vector<int>& cvs, const KeepBackup& keepBackup)
{
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return without(WriteManyEnd::busy);
    return runPlan(bench, planOfChosen(bench.state.set.table, cvs), keepBackup);
}

} // namespace karvo
