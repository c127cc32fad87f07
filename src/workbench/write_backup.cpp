#include "workbench/write_backup.h"

#include "cvdata/changes.h"
#include "cvdata/description_choice.h"
#include "link/write.h"
#include "workbench/describe.h"

#include <algorithm>

namespace karvo
{

namespace
{

// The CVs that can be written; beyond them stand measurements that differ from read to read.
constexpr std::size_t lastWritableCv = 256;

bool isKept(const ProgramState& state)
{
    return state.keptBlock && std::equal(state.image.begin() + 1, state.image.begin() + lastWritableCv + 1,
                                         state.keptBlock->begin() + 1);
}

std::optional<CvSet> setOfBlock(Workbench& bench, const DecoderProfile& profile)
{
    ProgramState& state = bench.state;
    CvSet set;
    set.profile = profile;
    const auto fileName = descriptionFileName(set.profile, state.language);
    auto description = loadDescription(bench, fileName, set.profile);
    if (!description)
        return std::nullopt;
    set.table = std::move(description->table);
    set.descriptionLines = std::move(description->lines);
    set.rowCount = description->rowCount;
    set.descriptionPath = state.programFolder / fileName;
    takeValues(set.table, state.image);
    set.modelCode = modelCode(set.profile.model);
    startUnchanged(set);
    return set;
}

} // namespace

bool keepBlockBeforeWrite(Workbench& bench, const KeepBackup& keep)
{
    ProgramState& state = bench.state;
    if (!state.unkeptImage)
        return true;
    if (!isKept(state)) {
        const auto set = setOfBlock(bench, *state.unkeptImage);
        if (!set)
            return false;
        const auto kept = keep(*set);
        if (kept.trouble) {
            const Text arguments[] = {*kept.trouble};
            bench.prompts.message(filledIn(state.texts.message(Message::backupFailed), arguments),
                                  PromptIcon::warning);
            return false;
        }
        state.keptBlock = state.image;
        state.keptFile = kept.file;
    }
    state.unkeptImage.reset();
    return true;
}

void noteWrite(ProgramState& state, int cv, int value)
{
    if (cv == resetCv)
        state.keptBlock.reset(); // all of them may have changed
    else if (state.keptBlock && !isTakeOverCv(cv))
        (*state.keptBlock)[static_cast<std::size_t>(cv)] = static_cast<std::uint8_t>(value);
}

} // namespace karvo
