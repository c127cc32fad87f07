#include "workbench/write_guard.h"

#include "cvdata/decoder_profile.h"
#include "link/exchange.h"
#include "link/read.h"
#include "workbench/vehicle_match.h"

#include <algorithm>
#include <utility>

namespace karvo
{

namespace
{

WriteManyEnd endOf(WriteEnd end)
{
    switch (end) {
    case WriteEnd::noReply:
        return WriteManyEnd::noReply;
    case WriteEnd::unknownDecoder:
        return WriteManyEnd::unknownDecoder;
    default:
        return WriteManyEnd::ended;
    }
}

WriteManyEnd endOf(ReadEnd end)
{
    switch (end) {
    case ReadEnd::noReply:
        return WriteManyEnd::noReply;
    case ReadEnd::wrongCheckByte:
        return WriteManyEnd::wrongCheckByte;
    default:
        return WriteManyEnd::ended;
    }
}

} // namespace

void askBeforeSending(Workbench& bench, std::vector<WriteOutcome>& outcomes)
{
    Link link = bench.link();
    for (WriteOutcome& outcome : outcomes) {
        if (isDue(outcome))
            outcome.end = guardWrite(link, {outcome.cv, outcome.value, bench.state.receiver.firmwareLevel});
    }
}

bool isDue(const WriteOutcome& outcome)
{
    return outcome.skip == WriteSkip::none && !outcome.end;
}

bool anyDue(const std::vector<WriteOutcome>& outcomes)
{
    return std::any_of(outcomes.begin(), outcomes.end(), isDue);
}

std::optional<WriteManyEnd> WriteGuard::meetVehicle(BlockUse use)
{
    block_.reset();
    readLeftOut_ = use == BlockUse::backup && canLeaveOutRead();
    if (readLeftOut_) {
        decoder_ = bench_.state.keptBlock->identification;
        return std::nullopt;
    }
    if (const auto end = identify())
        return end;
    if (const auto end = readBlock(use))
        return end;
    return confirmBuild();
}

// A vehicle that is only remembered never decides against a write: where it does not fit the list, the line
// is asked.
bool WriteGuard::canLeaveOutRead() const
{
    const ProgramState& state = bench_.state;
    const auto& kept = state.keptBlock;
    return kept && lineRunLasts(bench_.link(), kept->lineRun) && isOfModel(state.set, kept->profile.model) &&
           !otherBuildQuestion(state.set, kept->profile, state.texts);
}

std::optional<WriteManyEnd> WriteGuard::identify()
{
    const ProgramState& state = bench_.state;
    Link link = bench_.link();
    if (!EnsurePortOpen(link))
        return WriteManyEnd::ended;
    if (const auto end = identifyForWrite(link))
        return endOf(*end);
    decoder_ = state.link.identification;
    const Model model = modelOfTypeCode(state.link.typeCode);
    if (isOfModel(state.set, model))
        return std::nullopt;
    bench_.prompts.message(state.texts.message(Message::otherModel, {typeText(state.set.profile, state.texts),
                                                                     Text(modelName(model))}),
                           PromptIcon::warning);
    return WriteManyEnd::otherModel;
}

std::optional<WriteManyEnd> WriteGuard::readBlock(BlockUse use)
{
    Link link = bench_.link();
    CvImage image = bench_.state.image;
    const auto end = readForSave(link, image);
    if (end == ReadEnd::read) {
        block_ = blockJustRead(bench_.state.link, image);
        return std::nullopt;
    }
    if (end == ReadEnd::ended && bench_.state.stopRequested)
        return WriteManyEnd::stoppedByUser;
    if (use == BlockUse::plan || end == ReadEnd::ended)
        return endOf(end);
    return writeWithoutBackup();
}

// A decoder with a damaged memory must still be one that can be written, or set back.
std::optional<WriteManyEnd> WriteGuard::writeWithoutBackup()
{
    ProgramState& state = bench_.state;
    if (!bench_.prompts.question(state.texts.message(Message::blockNotKeepable), QuestionKind::backup))
        return WriteManyEnd::declined;
    state.keptBlock.reset(); // whose block that is, nobody can tell any more
    state.keptFile.clear();
    return std::nullopt;
}

std::optional<WriteManyEnd> WriteGuard::confirmBuild()
{
    ProgramState& state = bench_.state;
    if (!block_)
        return std::nullopt;
    if (!isKept(state, *block_))
        state.set.acceptedVehicle.reset();
    const auto question = otherBuildQuestion(state.set, block_->profile, state.texts);
    if (!question)
        return std::nullopt;
    if (!bench_.prompts.question(*question, QuestionKind::vehicle))
        return WriteManyEnd::declined;
    state.set.acceptedVehicle = block_->profile;
    return std::nullopt;
}

std::optional<WriteManyEnd> WriteGuard::keepBlock()
{
    if (!block_ || karvo::keepBlock(bench_, *block_, keepBackup_))
        return std::nullopt;
    return WriteManyEnd::backupFailed;
}

bool WriteGuard::mustMeetAnew()
{
    if (!readLeftOut_ || std::exchange(hasMetAnew_, true))
        return false;
    decoder_.clear();
    return true;
}

} // namespace karvo
