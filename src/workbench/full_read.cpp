#include "workbench/full_read.h"

#include "cvdata/described_set.h"
#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "link/identification.h"
#include "workbench/library_faults.h"
#include "workbench/line_use.h"
#include "workbench/put_on_bench.h"
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

bool showBlock(Workbench& bench, const DecoderBlock& block)
{
    ProgramState& state = bench.state;
    const DescriptionLibrary library = bench.library();
    auto description = library.describe(descriptionFileName(block.profile, state.language), block.profile);
    SetFaults faults{std::move(description.faults), description.leftOut};
    if (!description.content) {
        tellFaults(bench, faults.ofFiles);
        return false;
    }
    CvSet set = setOf(block.profile, std::move(description));
    valuesInto(set.table, block.image);
    set.rawReply = state.link.lastReply;
    takeKnowledge(set, library.expertKnowledge(expertFileName(block.profile, state.language), set.table),
                  faults.ofFiles);
    const bool isSame = isSameVehicle(state.set, block.profile, block.image);
    set.currentNumber = isSame ? state.set.currentNumber : 0;
    if (set.currentNumber == 0)
        set.currentNumber = firstCv(set.table);
    if (!isSame)
        state.askNoMore.reset();
    putOnBench(bench, std::move(set), faults);
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
    if (!showBlock(bench, block))
        return std::nullopt;
    showListFilled(bench);
    return end;
}

} // namespace karvo
