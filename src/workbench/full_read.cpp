#include "workbench/full_read.h"

#include "cvdata/changes.h"
#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "link/identification.h"
#include "workbench/describe.h"
#include "workbench/line_use.h"
#include "workbench/write_backup.h"

#include <algorithm>
#include <iterator>

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

// What makes a vehicle this one: its addresses and its numbers.
constexpr int identityCvs[] = {1, 3, 15, 16, 17, 18, 29, 168, 169, 170, 171};

// Whether the list on the bench is that of the decoder that has just been read, with what was written to it
// since.
bool isSameVehicle(const CvSet& set, const DecoderProfile& profile, const CvImage& image)
{
    if (set.isEmpty() || set.isOffline() || !set.baseline || set.profile.typeCode != profile.typeCode)
        return false;
    return std::all_of(std::begin(identityCvs), std::end(identityCvs), [&](int cv) {
        const auto index = static_cast<std::size_t>(cv);
        const auto before = numberFromText((*set.baseline)[index]);
        return !before || *before == image[index];
    });
}

// The first one of the list.
int firstCv(const CvTable& table)
{
    const auto cvs = table.describedCvs();
    return cvs.empty() ? 0 : cvs.front();
}

bool showReadDecoder(Workbench& bench, const DecoderProfile& profile)
{
    ProgramState& state = bench.state;
    const bool isSame = isSameVehicle(state.set, profile, state.image);
    const int chosenBefore = isSame ? state.set.currentNumber : 0;
    const auto fileName = descriptionFileName(profile, state.language);
    auto description = loadDescription(bench, fileName, profile);
    if (!description)
        return false;
    if (!isSame)
        state.askNoMore.reset();
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
    state.set.currentNumber = chosenBefore != 0 ? chosenBefore : firstCv(state.set.table);
    takeExpertFile(bench, expertFileName(profile, state.language));
    fillList(bench);
    reportFaults(bench, fileName, faults);
    return true;
}

void showListFilled(Workbench& bench)
{
    if (bench.state.link.typeCode == TypeCode::readOnlyReceiver)
        return bench.view.showStatus(bench.state.texts.caption(Caption::receiverOnlyRead));
    bench.view.showStatus(
        bench.state.texts.caption(Caption::listFilled, {textFromNumber(bench.state.set.rowCount)}));
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
    bench.state.lastRead = block;
    noteRead(bench.state, block);
    if (!showReadDecoder(bench, block.profile))
        return std::nullopt;
    showListFilled(bench);
    return end;
}

} // namespace karvo
