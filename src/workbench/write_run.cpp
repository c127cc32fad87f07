#include "workbench/write_run.h"

#include "cvdata/changes.h"
#include "cvdata/dcc_address.h"
#include "cvdata/main_list.h"
#include "link/write.h"
#include "workbench/address_notice.h"
#include "workbench/put_on_bench.h"
#include "workbench/write_limits.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int mostRefusalsInARow = 3;

// What speaks for the line or the decoder and not for the single CV.
bool endsTheRun(WriteEnd end)
{
    switch (end) {
    case WriteEnd::noReply:
    case WriteEnd::unacknowledged:
    case WriteEnd::unknownDecoder:
    case WriteEnd::otherDecoder:
    case WriteEnd::commandRefused:
    case WriteEnd::ended:
        return true;
    case WriteEnd::written:
    case WriteEnd::unconfirmed:
    case WriteEnd::refusedByUser:
    case WriteEnd::guarded:
    case WriteEnd::frameRefused:
        break;
    }
    return false;
}

constexpr int secondShortCv = 3;

// Whether a CV puts to use what another one holds.
bool putsToUse(int cv, int part)
{
    if (cv == configurationCv || cv == modeCv)
        return isAddressPart(part);
    return takeOverCvOf(part) == cv;
}

// Whether the decoder holds something else in the CV than was meant for it. A second address of 0 is none.
bool isUnconfirmed(const WriteOutcome& outcome)
{
    if (outcome.skip == WriteSkip::outsideLimits)
        return outcome.cv != secondShortCv || outcome.value != 0;
    return outcome.skip == WriteSkip::none && outcome.end != WriteEnd::written;
}

// Whether the write changes what the vehicle answers to, and does not only repeat it.
bool changesUse(const WriteOutcome& outcome)
{
    if (isTakeOverCv(outcome.cv) || !outcome.held)
        return true;
    const int weight = outcome.cv == modeCv ? secondAddressWeight : longAddressWeight;
    return ((*outcome.held ^ outcome.value) & weight) != 0;
}

// A part that the person has left out of an address whose other parts are written.
bool isLeftAsItWas(const WriteOutcome& outcome)
{
    return outcome.skip == WriteSkip::unticked && outcome.held != outcome.value;
}

class Run
{
public:
    Run(Workbench& bench, std::vector<WriteOutcome> outcomes, const Text& decoder, RunKind kind)
        : bench_(bench), link_(bench.link()), decoder_(decoder)
    {
        report_.outcomes = std::move(outcomes);
        bench_.state.link.manyUnderWay = kind == RunKind::many;
    }
    ~Run()
    {
        bench_.state.link.manyUnderWay = false;
        bench_.view.showWriteProgress(0, 0);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    WriteReport carryOut()
    {
        for (std::size_t at = 0; at < report_.outcomes.size() && report_.end == WriteManyEnd::finished;) {
            if (!isDue(report_.outcomes[at])) {
                ++at;
            } else if (bench_.state.stopRequested) {
                report_.end = WriteManyEnd::stoppedByUser;
            } else if (putsUnconfirmedToUse(at)) {
                report_.outcomes[at++].skip = WriteSkip::addressUnconfirmed;
            } else {
                at += writeFrom(at);
            }
        }
        return report_;
    }

private:
    // Writes the CV at this place, or the series that begins there; returns how many that were.
    std::size_t writeFrom(std::size_t at)
    {
        bench_.view.showWriteProgress(report_.outcomes[at].cv, remainingAfter(at));
        const std::size_t count = beginsSeries(at) ? seriesLength : 1;
        if (count == seriesLength) {
            writeSeriesAt(at);
        } else {
            const WriteOutcome& outcome = report_.outcomes[at];
            take(at,
                 writeCv(link_,
                         {.cv = outcome.cv, .value = outcome.value, .onlyFor = decoder_, .guarded = true}));
        }
        judge(*report_.outcomes[at + count - 1].end);
        return count;
    }

    // The decoder would answer to an address that nobody meant.
    bool putsUnconfirmedToUse(std::size_t at) const
    {
        const auto& outcomes = report_.outcomes;
        return std::any_of(outcomes.begin(), outcomes.begin() + static_cast<std::ptrdiff_t>(at),
                           [&](const WriteOutcome& before) {
                               const bool isOther = isUnconfirmed(before) ||
                                                    (isLeftAsItWas(before) && changesUse(outcomes[at]));
                               return putsToUse(outcomes[at].cv, before.cv) && isOther;
                           });
    }

    void writeSeriesAt(std::size_t at)
    {
        std::array<int, seriesLength> values{};
        for (std::size_t i = 0; i < seriesLength; ++i)
            values[i] = report_.outcomes[at + i].value;
        const auto ends = writeSeries(link_, values, decoder_);
        for (std::size_t i = 0; i < seriesLength; ++i)
            take(at + i, ends[i]);
    }

    bool beginsSeries(std::size_t at) const
    {
        const auto& outcomes = report_.outcomes;
        if (outcomes[at].cv != firstSeriesCv || at + seriesLength > outcomes.size())
            return false;
        for (std::size_t i = 0; i < seriesLength; ++i) {
            const bool isNext = outcomes[at + i].cv == firstSeriesCv + static_cast<int>(i);
            if (!isNext || !isDue(outcomes[at + i]))
                return false;
        }
        return true;
    }

    std::size_t remainingAfter(std::size_t at) const
    {
        return static_cast<std::size_t>(std::count_if(
            report_.outcomes.begin() + static_cast<std::ptrdiff_t>(at) + 1, report_.outcomes.end(), isDue));
    }

    void take(std::size_t at, WriteEnd end)
    {
        WriteOutcome& outcome = report_.outcomes[at];
        outcome.end = end;
        refusals_ = end == WriteEnd::frameRefused ? refusals_ + 1 : 0;
        noteWrite(bench_.state, outcome.cv, outcome.value, end);
        CvSet& set = bench_.state.set;
        if (end == WriteEnd::written && set.table.value(outcome.cv) == outcome.value)
            markWritten(set, outcome.cv);
    }

    // After a series its last CV tells whether the line still works: a failure before it was passed over.
    void judge(WriteEnd end)
    {
        if (end == WriteEnd::ended)
            report_.end = WriteManyEnd::ended;
        else if (endsTheRun(end) || refusals_ >= mostRefusalsInARow)
            report_.end = WriteManyEnd::stoppedByFault;
    }

    Workbench& bench_;
    Link link_;
    Text decoder_; // the identification that every write has to find
    WriteReport report_;
    int refusals_ = 0; // in a row
};

void showSummary(View& view, const LanguageTables& texts, const WriteReport& report)
{
    view.showStatus(texts.caption(Caption::writeSummary,
                                  {textFromNumber(static_cast<long long>(report.countOf(WriteEnd::written))),
                                   textFromNumber(static_cast<long long>(report.countOfWanted()))}));
}

std::vector<WriteOutcome> outcomesOf(const WritePlan& plan, const CvTable& table)
{
    std::vector<WriteOutcome> outcomes;
    for (const PlannedWrite& write : plan) {
        outcomes.push_back(
            {write.cv, write.value, write.skip, std::nullopt, write.held, nameOfCv(table, write.cv)});
    }
    return outcomes;
}

// What the vehicle held before; nothing for a CV of which that is not known.
std::vector<WriteOutcome> withHeld(std::vector<WriteOutcome> outcomes,
                                   const std::optional<DecoderBlock>& block)
{
    for (WriteOutcome& outcome : outcomes) {
        if (block && !outcome.held)
            outcome.held = block->image[static_cast<std::size_t>(outcome.cv)];
    }
    return outcomes;
}

Text noticeOf(const std::vector<WriteOutcome>& outcomes, const ProgramState& state)
{
    if (!state.keptBlock)
        return addressNotice(outcomes, nullptr, state.texts);
    const HeldBlock held{state.keptBlock->image, state.keptBlock->profile};
    return addressNotice(outcomes, &held, state.texts);
}

// A plan that was made after the vehicle was met leaves out what that lacks.
std::optional<WriteManyEnd> passGuard(Workbench& bench, const std::vector<WriteOutcome>& outcomes,
                                      WriteGuard& guard)
{
    if (!guard.hasMetVehicle()) {
        if (const auto end = guard.meetVehicle(BlockUse::backup))
            return end;
        const auto& known = guard.block() ? guard.block() : bench.state.keptBlock;
        if (known && !mayWriteWhatItLacks(bench.prompts, bench.state, outcomes, known->profile))
            return WriteManyEnd::declined;
    }
    return guard.keepBlock();
}

// Whether the first of these that was written found another decoder.
bool beganWithOtherDecoder(const WriteReport& report, const std::vector<WriteOutcome>& outcomes)
{
    const auto first = std::find_if(outcomes.begin(), outcomes.end(), isDue) - outcomes.begin();
    return report.outcomes[static_cast<std::size_t>(first)].end == WriteEnd::otherDecoder;
}

void reportOtherDecoder(Workbench& bench, const Text& expected)
{
    bench.prompts.message(
        bench.state.texts.message(Message::otherDecoder, {bench.state.link.identification, expected}),
        PromptIcon::warning);
}

// Where the vehicle was changed without a sign of it, the first write finds out, and nothing has been
// written: then the new one is met as any other.
WriteReport carryOut(Workbench& bench, const std::vector<WriteOutcome>& outcomes, WriteGuard& guard,
                     RunKind kind)
{
    if (const auto end = passGuard(bench, outcomes, guard))
        return {*end, outcomes};
    const auto& kept = bench.state.keptBlock;
    const auto backup = kept ? bench.state.keptFile : std::filesystem::path();
    auto report = Run(bench, withHeld(outcomes, kept), guard.decoder(), kind).carryOut();
    report.backup = backup;
    report.addressNotice = noticeOf(report.outcomes, bench.state);
    if (beganWithOtherDecoder(report, outcomes) && guard.mustMeetAnew())
        return carryOut(bench, outcomes, guard, kind);
    if (report.countOf(WriteEnd::otherDecoder) != 0)
        reportOtherDecoder(bench, guard.decoder());
    return report;
}

} // namespace

WriteReport runPlan(Workbench& bench, const WritePlan& plan, WriteGuard& guard, RunKind kind)
{
    if (plan.empty()) {
        bench.view.showStatus(bench.state.texts.caption(Caption::nothingToWrite));
        fillList(bench);
        return {WriteManyEnd::nothingToWrite, {}};
    }
    WriteReport report{WriteManyEnd::finished, outcomesOf(plan, bench.state.set.table)};
    askBeforeSending(bench, report.outcomes);
    // A plan that is made after the vehicle was met leaves out what the description does not provide for.
    if (!guard.hasMetVehicle() && !mayWriteBeyondLimits(bench.prompts, bench.state, report.outcomes))
        report.end = WriteManyEnd::declined;
    else if (anyDue(report.outcomes))
        report = carryOut(bench, report.outcomes, guard, kind);
    const bool mayHaveChanged = kind == RunKind::many || report.countOf(WriteEnd::written) != 0;
    if (mayHaveChanged && !bench.state.set.isEmpty()) // a reset needs no list
        fillList(bench);
    if (kind == RunKind::many && report.hasRun())
        showSummary(bench.view, bench.state.texts, report);
    return report;
}

} // namespace karvo
