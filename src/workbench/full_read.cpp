#include "workbench/full_read.h"

#include "cvdata/changes.h"
#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "workbench/describe.h"
#include "workbench/line_use.h"
#include "workbench/write_backup.h"

namespace karvo
{

namespace
{

class StartedByButton
{
public:
    StartedByButton(ProgramState& state, ReadStarter starter) : state_(state)
    {
        state_.readStartedByButton = starter == ReadStarter::button;
    }
    ~StartedByButton() { state_.readStartedByButton = false; }
    StartedByButton(const StartedByButton&) = delete;
    StartedByButton& operator=(const StartedByButton&) = delete;

private:
    ProgramState& state_;
};

bool showReadDecoder(Workbench& bench, const DecoderProfile& profile)
{
    ProgramState& state = bench.state;
    const auto fileName = descriptionFileName(profile, state.language);
    auto description = loadDescription(bench, fileName, profile);
    if (!description)
        return false;
    const auto faults = std::move(description->faults);
    takeDescription(bench, std::move(*description), fileName);
    takeValues(state.set.table, state.image);
    startUnchanged(state.set);
    state.set.profile = profile;
    state.set.modelCode = modelCode(profile.model);
    state.set.rawReply = state.link.lastReply;
    state.set.offlineItem.clear();
    state.set.listPath.clear(); // it belongs to the set that was there before
    state.set.fileProcessor.reset();
    state.set.currentNumber = 0;
    takeExpertFile(bench, expertFileName(profile, state.language));
    fillList(bench);
    reportFaults(bench, fileName, faults);
    return true;
}

void showListFilled(Workbench& bench)
{
    const Text count[] = {textFromNumber(bench.state.set.rowCount)};
    bench.view.showStatus(filledIn(bench.state.texts.caption(Caption::listFilled), count));
}

} // namespace

std::optional<ReadEnd> readIntoList(Workbench& bench, ReadStarter starter)
{
    const LineUse line(bench);
    if (!line.isGranted())
        return std::nullopt;
    const StartedByButton started(bench.state, starter);
    Link link = bench.link();
    const auto end = readDecoder(link, bench.state.image, bench.state.receiver);
    if (end != ReadEnd::read)
        return end;
    const auto block = blockJustRead(bench.state.link, bench.state.image);
    noteRead(bench.state, block);
    if (!showReadDecoder(bench, block.profile))
        return std::nullopt;
    showListFilled(bench);
    return end;
}

} // namespace karvo
