#include "workbench/write_backup.h"

#include "cvdata/changes.h"
#include "cvdata/described_set.h"
#include "cvdata/description_choice.h"
#include "link/read.h"
#include "workbench/library_faults.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::size_t lastWritableCv = 256;
constexpr int noLineRun = 0; // they are counted from 1

std::optional<CvSet> setOfBlock(Workbench& bench, const DecoderBlock& block)
{
    auto description =
        bench.library().describe(descriptionFileName(block.profile, bench.state.language), block.profile);
    tellFaults(bench, description.faults);
    if (!description.content)
        return std::nullopt;
    CvSet set = setOf(block.profile, std::move(description));
    valuesInto(set.table, block.image);
    startUnchanged(set);
    return set;
}

} // namespace

DecoderBlock blockJustRead(const LinkState& state, const CvImage& image)
{
    const auto receiver = receiverValuesOf(state.typeCode, image);
    return {image, profileOf(state.typeCode, state.identification, image, receiver), state.identification,
            state.run};
}

bool isKept(const ProgramState& state, const DecoderBlock& block)
{
    const auto& kept = state.keptBlock;
    return kept && kept->identification == block.identification &&
           std::equal(block.image.begin() + 1, block.image.begin() + lastWritableCv + 1,
                      kept->image.begin() + 1);
}

bool keepBlock(Workbench& bench, const DecoderBlock& block, const KeepBackup& keep)
{
    ProgramState& state = bench.state;
    if (!isKept(state, block)) {
        const auto set = setOfBlock(bench, block);
        if (!set)
            return false;
        const auto kept = keep(*set);
        if (kept.trouble) {
            bench.prompts.message(state.texts.message(Message::backupFailed, {*kept.trouble}),
                                  PromptIcon::warning);
            return false;
        }
        state.keptFile = kept.file;
    }
    state.keptBlock = block;
    return true;
}

void noteRead(ProgramState& state, const DecoderBlock& block)
{
    if (state.keptBlock)
        state.keptBlock->lineRun = isKept(state, block) ? block.lineRun : noLineRun;
}

void noteWrite(ProgramState& state, int cv, int value, WriteEnd end)
{
    if (cv == resetCv && mayHaveReset(end))
        state.keptBlock.reset();
    else if (state.keptBlock && !isTakeOverCv(cv) &&
             (end == WriteEnd::written || end == WriteEnd::unconfirmed))
        state.keptBlock->image[static_cast<std::size_t>(cv)] = static_cast<std::uint8_t>(value);
}

bool mayHaveReset(WriteEnd end)
{
    return end == WriteEnd::written || end == WriteEnd::frameRefused || end == WriteEnd::unacknowledged;
}

} // namespace karvo
