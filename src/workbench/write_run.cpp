#include "workbench/write_run.h"

#include "cvdata/changes.h"
#include "cvdata/dcc_address.h"
#include "link/series_write.h"
#include "workbench/describe.h"

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

constexpr int configurationCv = 29; // which form of address
constexpr int modeCv = 21;          // whether the second address too
constexpr int secondShortCv = 3;

// Whether a CV puts to use what another one holds.
bool putsToUse(int cv, int part)
{
    switch (cv) {
    case configurationCv:
    case modeCv:
        return isAddressPart(part);
    case firstServoTakeOverCv:
        return part == 11 || part == 12;
    case secondServoTakeOverCv:
        return part == 13 || part == 14;
    default:
        return false;
    }
}

// Whether the decoder holds something else in the CV than was meant for it. A second address of 0 is none.
bool isUnconfirmed(const WriteOutcome& outcome)
{
    if (outcome.skip == WriteSkip::outsideLimits)
        return outcome.cv != secondShortCv || outcome.value != 0;
    return outcome.skip == WriteSkip::none && outcome.end != WriteEnd::written;
}

class Run
{
public:
    Run(Workbench& bench, const WritePlan& plan)
        : bench_(bench), link_(bench.link()), decoder_(bench.state.link.identification)
    {
        for (const PlannedWrite& write : plan)
            report_.outcomes.push_back({write.cv, write.value, write.skip});
        bench_.state.link.manyUnderWay = true;
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
            if (report_.outcomes[at].skip != WriteSkip::none) {
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
            take(at, writeCv(link_, {outcome.cv, outcome.value, firmwareLevel(), decoder_}));
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
                               return putsToUse(outcomes[at].cv, before.cv) && isUnconfirmed(before);
                           });
    }

    void writeSeriesAt(std::size_t at)
    {
        std::array<int, seriesLength> values{};
        for (std::size_t i = 0; i < seriesLength; ++i)
            values[i] = report_.outcomes[at + i].value;
        const auto ends = writeSeries(link_, values, firmwareLevel(), decoder_);
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
            if (!isNext || outcomes[at + i].skip != WriteSkip::none)
                return false;
        }
        return true;
    }

    std::size_t remainingAfter(std::size_t at) const
    {
        return static_cast<std::size_t>(std::count_if(
            report_.outcomes.begin() + static_cast<std::ptrdiff_t>(at) + 1, report_.outcomes.end(),
            [](const WriteOutcome& outcome) { return outcome.skip == WriteSkip::none; }));
    }

    void take(std::size_t at, WriteEnd end)
    {
        WriteOutcome& outcome = report_.outcomes[at];
        outcome.end = end;
        refusals_ = end == WriteEnd::frameRefused ? refusals_ + 1 : 0;
        if (end != WriteEnd::written)
            return;
        markWritten(bench_.state.set, outcome.cv);
        noteWrite(bench_.state, outcome.cv, outcome.value);
    }

    // After a series its last CV tells whether the line still works: a failure before it was passed over.
    void judge(WriteEnd end)
    {
        if (end == WriteEnd::otherDecoder)
            reportOtherDecoder();
        if (end == WriteEnd::ended)
            report_.end = WriteManyEnd::ended;
        else if (endsTheRun(end) || refusals_ >= mostRefusalsInARow)
            report_.end = WriteManyEnd::stoppedByFault;
    }

    void reportOtherDecoder()
    {
        const Text identifications[] = {bench_.state.link.identification, decoder_};
        bench_.prompts.message(filledIn(bench_.state.texts.message(Message::otherDecoder), identifications),
                               PromptIcon::warning);
    }

    int firmwareLevel() const { return bench_.state.receiver.firmwareLevel; }

    Workbench& bench_;
    Link link_;
    Text decoder_; // the identification that every write has to find
    WriteReport report_;
    int refusals_ = 0; // in a row
};

void showSummary(Workbench& bench, const WriteReport& report)
{
    const Text counts[] = {textFromNumber(static_cast<long long>(report.countOf(WriteEnd::written))),
                           textFromNumber(static_cast<long long>(report.countOfWanted()))};
    bench.view.showStatus(filledIn(bench.state.texts.caption(Caption::writeSummary), counts));
}

bool anyToWrite(const WritePlan& plan)
{
    return std::any_of(plan.begin(), plan.end(),
                       [](const PlannedWrite& write) { return write.skip == WriteSkip::none; });
}

WriteReport nothingDone(const WritePlan& plan, WriteManyEnd end)
{
    WriteReport report{end, {}};
    for (const PlannedWrite& write : plan)
        report.outcomes.push_back({write.cv, write.value, write.skip});
    return report;
}

} // namespace

WriteReport runPlan(Workbench& bench, const WritePlan& plan, const KeepBackup& keepBackup)
{
    if (plan.empty()) {
        bench.view.showStatus(bench.state.texts.caption(Caption::nothingToWrite));
        fillList(bench);
        return nothingDone(plan, WriteManyEnd::nothingToWrite);
    }
    if (anyToWrite(plan) && !keepBlockBeforeWrite(bench, keepBackup)) {
        fillList(bench);
        return nothingDone(plan, WriteManyEnd::backupFailed);
    }
    auto report = Run(bench, plan).carryOut();
    fillList(bench);
    if (report.end != WriteManyEnd::ended)
        showSummary(bench, report);
    return report;
}

} // namespace karvo
