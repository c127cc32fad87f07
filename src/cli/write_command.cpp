#include "cli/write_command.h"

#include "cli/list_output.h"
#include "cli/terminal.h"
#include "cvdata/main_list.h"
#include "platform/qt_clock.h"
#include "platform/text_conversion.h"
#include "workbench/change_value.h"
#include "workbench/full_read.h"
#include "workbench/list_files.h"
#include "workbench/user_folders.h"
#include "workbench/write_many.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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
        return keepBackup(bench.files, QtClock(), bench.state.userFolders, set);
    };
}

// "CV48 = 12 -> 5  will be written  Name".
Text previewLine(const PreviewRow& row, const LanguageTables& texts)
{
    const auto remark = row.isWritten() ? Caption::willBeWritten : captionOfSkip(row.skip);
    return cvLabel(row.cv) + heldText(row.held) + u" -> " + textFromNumber(row.value) + u"  " +
           texts.caption(remark) + u"  " + row.name;
}

QJsonValue heldOrNull(std::optional<int> held)
{
    return held ? QJsonValue(*held) : QJsonValue();
}

QJsonObject previewObject(const WritePreview& preview, const LanguageTables& texts)
{
    QJsonArray rows;
    for (const PreviewRow& row : preview.rows) {
        const auto remark = row.isWritten() ? Caption::willBeWritten : captionOfSkip(row.skip);
        rows.append(QJsonObject{{QStringLiteral("cv"), row.cv},
                                {QStringLiteral("name"), toQString(row.name)},
                                {QStringLiteral("old"), heldOrNull(row.held)},
                                {QStringLiteral("new"), row.value},
                                {QStringLiteral("written"), row.isWritten()},
                                {QStringLiteral("remark"), toQString(texts.caption(remark))}});
    }
    return {{QStringLiteral("cvs"), rows},
            {QStringLiteral("toBeWritten"), static_cast<int>(preview.countOfWritten())},
            {QStringLiteral("leftOut"), static_cast<int>(preview.countOfLeftOut())},
            {QStringLiteral("otherAddressesOrNumbers"), preview.otherVehicle},
            {QStringLiteral("lowBattery"), preview.lowBattery.has_value()}};
}

void printPreview(const WritePreview& preview, const ProgramState& state, bool json)
{
    const LanguageTables& texts = state.texts;
    if (json) {
        printJson(QJsonDocument(previewObject(preview, texts)));
        return;
    }
    for (const PreviewRow& row : preview.rows)
        printLine(stdout, previewLine(row, texts));
    const Text counts[] = {textFromNumber(static_cast<long long>(preview.countOfWritten())),
                           textFromNumber(static_cast<long long>(preview.countOfLeftOut()))};
    printLine(stdout, filledIn(texts.caption(Caption::previewCounts), counts));
    if (preview.otherVehicle)
        printLine(stdout, texts.caption(Caption::previewOtherVehicle));
    if (preview.lowBattery)
        printLine(stdout, lowBatteryText(preview, state));
}

void printOutcomes(const WriteReport& report, const LanguageTables& texts, bool json)
{
    QJsonArray array;
    for (const WriteOutcome& outcome : report.outcomes) {
        if (!json)
            printLine(stdout, outcomeLine(outcome, texts));
        array.append(QJsonObject{{QStringLiteral("cv"), outcome.cv},
                                 {QStringLiteral("name"), toQString(outcome.name)},
                                 {QStringLiteral("old"), heldOrNull(outcome.held)},
                                 {QStringLiteral("value"), outcome.value},
                                 {QStringLiteral("written"), outcome.end == WriteEnd::written},
                                 {QStringLiteral("outcome"), toQString(outcomeText(outcome, texts))}});
    }
    if (json)
        printJson(QJsonDocument(array));
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

ExitCode finish(Workbench& bench, const WriteReport& report, const CliArguments& arguments)
{
    printOutcomes(report, bench.state.texts, arguments.json);
    if (!report.addressNotice.empty())
        printLine(stderr, report.addressNotice);
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

ExitCode writeFromList(Workbench& bench, const CliArguments& arguments)
{
    ListWrite how;
    how.beyond = writesBeyondLimits(arguments) ? BeyondLimits::planned : BeyondLimits::leftOut;
    if (!arguments.dryRun)
        return finish(bench, writeChanged(bench, backupIn(bench), how), arguments);
    how.confirm = [&](const WritePreview& preview) {
        printPreview(preview, bench.state, arguments.json);
        return PreviewAnswer::cancel;
    };
    const auto report = writeChanged(bench, backupIn(bench), how);
    return report.end == WriteManyEnd::cancelled ? ExitCode::done : exitCodeOf(report);
}

// What the line has just told is what the vehicle holds.
ExitCode showChosen(Workbench& bench, const std::vector<int>& cvs, const CliArguments& arguments)
{
    const ProgramState& state = bench.state;
    auto plan = planOfChosen(state.set.table, cvs);
    for (PlannedWrite& write : plan) {
        write.held = state.image[static_cast<std::size_t>(write.cv)];
        if (!writesBeyondLimits(arguments))
            write.skip = limitsAgainst(state.set.table, write.cv, write.value);
    }
    printPreview(previewOf(plan, state.set, state.image, state.set.profile), state, arguments.json);
    bench.view.showStatus(state.texts.caption(Caption::writtenNothing));
    return ExitCode::done;
}

} // namespace

ExitCode runWrite(Workbench& bench, const CliArguments& arguments)
{
    if (!arguments.from.isEmpty()) {
        if (!openList(bench, toPath(arguments.from)))
            return ExitCode::fileTrouble;
        return writeFromList(bench, arguments);
    }
    const auto end = readIntoList(bench, ReadStarter::other);
    if (!end)
        return ExitCode::fileTrouble;
    const bool maySetBack = isResetAlone(arguments) && !arguments.dryRun && bench.state.link.identified;
    if (*end != ReadEnd::read && maySetBack)
        return finish(bench, writeReset(bench, arguments.changes.front().value, backupIn(bench)), arguments);
    if (*end != ReadEnd::read)
        return exitCodeOf(*end);
    std::vector<int> cvs;
    for (const CvChange& change : arguments.changes) {
        if (takeValueForWrite(bench, change.cv, change.value) != ChangeEnd::changed)
            return ExitCode::wrongArguments;
        cvs.push_back(change.cv);
    }
    if (arguments.dryRun)
        return showChosen(bench, cvs, arguments);
    return finish(bench, writeChosen(bench, cvs, backupIn(bench)), arguments);
}

} // namespace karvo
