#include "workbench/write_single.h"

#include "workbench/full_read.h"
#include "workbench/line_use.h"
#include "workbench/list_files.h"
#include "workbench/write_run.h"

namespace karvo
{

namespace
{

constexpr int resetValue = 1; // any value does

std::optional<WriteEnd> writeOne(Workbench& bench, const KeepBackup& keepBackup, int cv, int value)
{
    const LineUse line(bench);
    if (!line.isGranted())
        return std::nullopt;
    WriteGuard guard(bench, keepBackup);
    const auto report = runPlan(bench, {{cv, value}}, guard, RunKind::single);
    if (!report.addressNotice.empty())
        bench.prompts.message(report.addressNotice, PromptIcon::warning);
    return report.outcomes.front().end;
}

} // namespace

std::optional<WriteEnd> writeSingle(Workbench& bench, const KeepBackup& keepBackup)
{
    const CvSet& set = bench.state.set;
    const int cv = set.currentNumber;
    const auto value = cv >= 1 && cv <= CvTable::lastRow ? set.table.value(cv) : std::nullopt;
    return isCvValue(value) ? writeOne(bench, keepBackup, cv, *value) : std::nullopt;
}

std::optional<WriteEnd> resetDecoder(Workbench& bench, const KeepBackup& keepBackup)
{
    const auto end = writeOne(bench, keepBackup, resetCv, resetValue);
    if (end && mayHaveReset(*end) &&
        bench.prompts.question(bench.state.texts.message(Message::readAfterReset)) && mayReplaceSet(bench))
        readIntoList(bench, ReadStarter::other);
    return end;
}

} // namespace karvo
