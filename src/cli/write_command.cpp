#include "cli/write_command.h"

#include "cli/write_output.h"
#include "platform/qt_clock.h"
#include "platform/text_conversion.h"
#include "workbench/change_value.h"
#include "workbench/full_read.h"
#include "workbench/list_files.h"
#include "workbench/user_folders.h"
#include "workbench/write_limits.h"
#include "workbench/write_many.h"

#include <QStandardPaths>

#include <algorithm>

namespace karvo
{

namespace
{

KeepBackup backupIn(Workbench& bench)
{
    const auto documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    bench.state.userFolders = findUserFolders(bench.files, bench.state.programFolder, toPath(documents));
    return [&bench](const CvSet& set) {
        return keepBackup(bench.files, bench.state.texts, QtClock(), bench.state.userFolders, set);
    };
}

// Why a write ended of which nothing has come through.
ExitCode exitCodeOfFault(const WriteReport& report)
{
    const auto failed = std::find_if(report.outcomes.begin(), report.outcomes.end(),
                                     [](const WriteOutcome& outcome) { return outcome.end.has_value(); });
    if (failed == report.outcomes.end() || report.countOf(WriteEnd::written) != 0)
        return ExitCode::notAllWritten;
    if (failed->end == WriteEnd::noReply)
        return ExitCode::noReply;
    return failed->end == WriteEnd::unknownDecoder ? ExitCode::unknownDecoder : ExitCode::notAllWritten;
}

ExitCode exitCodeOf(const WriteReport& report)
{
    switch (report.end) {
    case WriteManyEnd::noReply:
        return ExitCode::noReply;
    case WriteManyEnd::unknownDecoder:
        return ExitCode::unknownDecoder;
    case WriteManyEnd::wrongCheckByte:
        return ExitCode::damagedData;
    case WriteManyEnd::backupFailed:
        return ExitCode::fileTrouble;
    case WriteManyEnd::stoppedByFault:
        return exitCodeOfFault(report);
    case WriteManyEnd::ended:
        return report.countOf(WriteEnd::written) == 0 ? ExitCode::portRefused : ExitCode::notAllWritten;
    default:
        return report.isClean() ? ExitCode::done : ExitCode::notAllWritten;
    }
}

ExitCode finish(CommandRun& run, const WriteReport& report)
{
    printOutcomes(run.output, report, run.texts());
    return exitCodeOf(report);
}

bool isResetAlone(const CliArguments& arguments)
{
    return arguments.changes.size() == 1 && arguments.changes.front().cv == resetCv;
}

bool writesBeyondLimits(const CliArguments& arguments)
{
    return arguments.forced.count(QuestionKind::limits) != 0;
}

ExitCode writeFromList(CommandRun& run)
{
    Workbench& bench = run.bench;
    if (!openList(bench, toPath(run.arguments.from)))
        return ExitCode::fileTrouble;
    ListWrite how;
    how.beyond = writesBeyondLimits(run.arguments) ? BeyondLimits::planned : BeyondLimits::leftOut;
    if (!run.arguments.dryRun)
        return finish(run, writeChanged(bench, backupIn(bench), how));
    how.confirm = [&](const WritePreview& preview) {
        printPreview(run.output, preview, bench.state);
        return PreviewAnswer::cancel;
    };
    const auto report = writeChanged(bench, backupIn(bench), how);
    return report.end == WriteManyEnd::cancelled ? ExitCode::done : exitCodeOf(report);
}

// What the line has just told is what the vehicle holds. The question that the write would ask is shown too.
ExitCode showChosen(CommandRun& run, const std::vector<int>& cvs)
{
    const ProgramState& state = run.bench.state;
    auto plan = planOfChosen(state.set, cvs);
    std::vector<WriteOutcome> outcomes;
    for (PlannedWrite& write : plan) {
        write.held = state.image[static_cast<std::size_t>(write.cv)];
        outcomes.push_back({write.cv, write.value});
    }
    const Text question = writesBeyondLimits(run.arguments) ? Text() : questionBeyondLimits(state, outcomes);
    run.output.put(QStringLiteral("question"), toQString(question));
    if (!question.empty())
        run.output.say(question);
    printPreview(run.output, previewOf(plan, state.set, state.image, state.set.profile), state);
    run.bench.view.showStatus(run.texts().caption(Caption::writtenNothing));
    return ExitCode::done;
}

ExitCode writeChanges(CommandRun& run)
{
    Workbench& bench = run.bench;
    const auto& changes = run.arguments.changes;
    const auto end = readIntoList(bench, ReadStarter::other);
    if (!end)
        return ExitCode::fileTrouble;
    if (run.interrupt.times() > 0)
        return ExitCode::interrupted;
    const bool maySetBack =
        isResetAlone(run.arguments) && !run.arguments.dryRun && bench.state.link.identified;
    if (*end != ReadEnd::read && maySetBack)
        return finish(run, writeReset(bench, changes.front().value, backupIn(bench)));
    if (*end != ReadEnd::read)
        return exitCodeOf(*end);
    std::vector<int> cvs;
    for (const CvChange& change : changes) {
        if (takeValueForWrite(bench, change.cv, change.value) != ChangeEnd::changed)
            return ExitCode::wrongArguments;
        cvs.push_back(change.cv);
    }
    return run.arguments.dryRun ? showChosen(run, cvs)
                                : finish(run, writeChosen(bench, cvs, backupIn(bench)));
}

} // namespace

ExitCode runWrite(CommandRun& run)
{
    run.interrupt.listen([&run] { run.bench.state.stopRequested = true; });
    return run.arguments.from.isEmpty() ? writeChanges(run) : writeFromList(run);
}

} // namespace karvo
