#include "cli/write_command.h"

#include "cli/list_output.h"
#include "cli/terminal.h"
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

void printOutcomes(const WriteReport& report, const LanguageTables& texts, bool json)
{
    QJsonArray array;
    for (const WriteOutcome& outcome : report.outcomes) {
        if (!json)
            printLine(stdout, outcomeLine(outcome, texts));
        array.append(QJsonObject{{QStringLiteral("cv"), outcome.cv},
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
    return exitCodeOf(report);
}

bool isResetAlone(const CliArguments& arguments)
{
    return arguments.changes.size() == 1 && arguments.changes.front().cv == resetCv;
}

} // namespace

ExitCode runWrite(Workbench& bench, const CliArguments& arguments)
{
    if (!arguments.from.isEmpty()) {
        if (!openList(bench, toPath(arguments.from)))
            return ExitCode::fileTrouble;
        return finish(bench, writeChanged(bench, backupIn(bench)), arguments);
    }
    const auto end = readIntoList(bench, ReadStarter::other);
    if (!end)
        return ExitCode::fileTrouble;
    if (*end != ReadEnd::read && isResetAlone(arguments) && bench.state.link.identified)
        return finish(bench, writeReset(bench, arguments.changes.front().value, backupIn(bench)), arguments);
    if (*end != ReadEnd::read)
        return exitCodeOf(*end);
    std::vector<int> cvs;
    for (const CvChange& change : arguments.changes) {
        if (changeValue(bench, change.cv, change.value) != ChangeEnd::changed)
            return ExitCode::wrongArguments;
        cvs.push_back(change.cv);
    }
    return finish(bench, writeChosen(bench, cvs, backupIn(bench)), arguments);
}

} // namespace karvo
