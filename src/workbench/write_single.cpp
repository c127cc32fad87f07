#include "workbench/write_single.h"

#include "cvdata/changes.h"
#include "workbench/describe.h"
#include "workbench/full_read.h"
#include "workbench/line_use.h"
#include "workbench/list_files.h"

namespace karvo
{

namespace
{

constexpr int resetValue = 1; // any value does

std::optional<WriteEnd> writeOne(Workbench& bench, const KeepBackup& keepBackup, int cv, int value)
{
    const LineUse line(bench);
    if (!line.isGranted() || !keepBlockBeforeWrite(bench, keepBackup))
        return std::nullopt;
    Link link = bench.link();
    const auto end = writeCv(link, {cv, value, bench.state.receiver.firmwareLevel});
    if (end == WriteEnd::written)
        noteWrite(bench.state, cv, value);
    return end;
}

bool mayHaveReset(WriteEnd end)
{
    return end == WriteEnd::written || end == WriteEnd::frameRefused || end == WriteEnd::unacknowledged;
}

} // namespace

std::optional<WriteEnd> writeSingle(Workbench& bench, const KeepBackup& keepBackup)
{
    CvSet& set = bench.state.set;
    const int cv = set.currentNumber;
    const auto value = cv >= 1 && cv <= CvTable::lastRow ? set.table.value(cv) : std::nullopt;
    if (!value || *value < 0 || *value > 255)
        return std::nullopt;
    const auto end = writeOne(bench, keepBackup, cv, *value);
    if (end == WriteEnd::written) {
        markWritten(set, cv);
        fillList(bench);
    }
    return end;
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
