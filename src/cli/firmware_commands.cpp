#include "cli/firmware_commands.h"

#include "cli/stable_words.h"
#include "firmware/interface_update.h"
#include "firmware/unpack.h"
#include "firmware/update_checks.h"
#include "firmware/upload_verdict.h"
#include "platform/qt_clock.h"
#include "platform/text_conversion.h"
#include "platform/zip_archive.h"

#include <QJsonArray>

namespace karvo
{

namespace
{

// A transfer asks between two messages whether it is to end: no wait may be cut off.
void heedLater()
{
}

class TerminalUpload : public UploadObserver
{
public:
    explicit TerminalUpload(CommandRun& run) : run_(run) {}

    void showUpload(const UploadProgress& progress) override
    {
        if (progress.phase == UploadPhase::pages)
            run_.bench.view.showProgress(progress.page - 1, progress.pages);
        else if (progress.phase != phase_)
            run_.bench.view.showStatus(run_.texts().caption(captionOfPhase(progress.phase)));
        phase_ = progress.phase;
    }
    void showStep(const UploadStep& /*step*/) override {}
    void showSilence(EraseState /*erase*/) override
    {
        run_.bench.view.showStatus(run_.texts().caption(Caption::noLoaderReplies));
    }
    bool stopRequested() override { return run_.interrupt.times() > 0; }

private:
    CommandRun& run_;
    std::optional<UploadPhase> phase_;
};

class TerminalUpdate : public UpdateObserver
{
public:
    explicit TerminalUpdate(CommandRun& run) : run_(run) {}

    void showHeader(const Text& header) override { run_.bench.view.showStatus(header); }
    void showStart(const Text& text) override
    {
        run_.bench.view.showStatus(text);
        isSending_ = true;
        run_.interrupt.listen([this] { warn(); });
        if (run_.interrupt.times() > 0)
            warn();
    }
    void showProgress(std::uint64_t sent, std::uint64_t total) override
    {
        run_.bench.view.showProgress(sent, total);
    }
    void showEnd() override
    {
        run_.interrupt.listen(heedLater);
        run_.bench.view.showProgress(0, 0);
    }
    bool stopRequested() override
    {
        const int times = run_.interrupt.times();
        return isSending_ ? warnedAt_ && times > *warnedAt_ : times > 0;
    }

private:
    // What came before it was told does not count as an answer to it.
    void warn()
    {
        if (warnedAt_)
            return;
        warnedAt_ = run_.interrupt.times();
        run_.bench.prompts.message(run_.texts().message(Message::interruptBreaksUpdate));
    }

    CommandRun& run_;
    bool isSending_ = false;
    std::optional<int> warnedAt_; // after how many of them the person was warned
};

class PatientUnzip : public WorkObserver
{
public:
    bool stopRequested() override { return false; }
};

Text numberText(std::size_t number)
{
    return textFromNumber(static_cast<long long>(number));
}

QJsonValue jsonNumber(std::size_t number)
{
    return static_cast<qint64>(number);
}

void printUploadPlan(CommandRun& run, const HexImage& image)
{
    const auto plan = uploadPlan(image);
    std::size_t bytes = 0;
    for (const PlannedMessage& message : plan)
        bytes += message.bytes.size();
    const std::size_t pages = image.pages().size();
    run.output.put(QStringLiteral("pages"), jsonNumber(pages));
    run.output.put(QStringLiteral("messages"), jsonNumber(plan.size()));
    run.output.put(QStringLiteral("bytes"), jsonNumber(bytes));
    run.output.line(run.texts().caption(Caption::uploadPlan,
                                        {numberText(pages), numberText(plan.size()), numberText(bytes)}));
}

void printUpload(CommandRun& run, const UploadReport& report)
{
    run.output.put(QStringLiteral("end"), wordOf(report.end));
    run.output.put(QStringLiteral("pages"), jsonNumber(report.pages));
    run.output.put(QStringLiteral("accepted"), jsonNumber(report.pagesAccepted()));
    if (report.steps.empty())
        return;
    const Text verdict = uploadVerdict(run.texts(), report);
    if (report.isAccepted())
        run.output.line(verdict);
    else
        run.output.say(verdict);
    run.output.put(QStringLiteral("verdict"), toQString(verdict).remove(QLatin1Char('\r')));
}

void printUpdatePlan(CommandRun& run, const UpdateFile& file)
{
    constexpr std::size_t bytesOfARecord = updateRecordSize + 2; // with its sum
    const std::size_t records = file.records.size();
    const std::size_t blocks = (records + recordsOfABlock - 1) / recordsOfABlock;
    const Text header = updateHeaderText(run.texts(), file);
    QJsonArray findings;
    run.output.line(run.texts().caption(Caption::updatePlan, {numberText(records), numberText(blocks),
                                                              numberText(records * bytesOfARecord)}));
    run.output.line(header);
    for (const Text& finding : unusualIn(run.texts(), file)) {
        run.output.line(finding);
        findings.append(toQString(finding));
    }
    run.output.put(QStringLiteral("records"), jsonNumber(records));
    run.output.put(QStringLiteral("blocks"), jsonNumber(blocks));
    run.output.put(QStringLiteral("bytes"), jsonNumber(records * bytesOfARecord));
    run.output.put(QStringLiteral("header"), toQString(header));
    run.output.put(QStringLiteral("findings"), findings);
}

ExitCode exitCodeOf(const UploadReport& report)
{
    if (report.end == UploadEnd::portRefused)
        return ExitCode::portRefused;
    if (!report.anyReply())
        return ExitCode::noReply; // there is no loader, or it is not listening
    return report.isAccepted() ? ExitCode::done : ExitCode::notAllWritten;
}

ExitCode exitCodeOf(UpdateEnd end)
{
    switch (end) {
    case UpdateEnd::sent:
        return ExitCode::done;
    case UpdateEnd::noFile:
        return ExitCode::fileTrouble;
    case UpdateEnd::portRefused:
        return ExitCode::portRefused;
    case UpdateEnd::notAnswered:
    case UpdateEnd::noReply:
        return ExitCode::noReply;
    case UpdateEnd::wrongModel:
        return ExitCode::unknownDecoder;
    default:
        return ExitCode::notAllWritten;
    }
}

} // namespace

ExitCode runFlash(CommandRun& run)
{
    const auto image = readHexFile(run.bench, toPath(run.arguments.operands.front()));
    if (!image)
        return ExitCode::fileTrouble;
    if (run.arguments.dryRun) {
        printUploadPlan(run, *image);
        return ExitCode::done;
    }
    run.interrupt.listen(heedLater);
    TerminalUpload observer(run);
    const auto report = uploadImage(run.bench, *image, observer);
    if (report.end == UploadEnd::sent)
        run.bench.view.showProgress(report.pages, report.pages);
    run.bench.view.showProgress(0, 0);
    printUpload(run, report);
    return exitCodeOf(report);
}

ExitCode runUpdate(CommandRun& run)
{
    const auto path = toPath(run.arguments.operands.front());
    if (run.arguments.dryRun) {
        const auto file = readUpdateFile(run.bench, path);
        if (!file)
            return ExitCode::fileTrouble;
        printUpdatePlan(run, *file);
        return ExitCode::done;
    }
    const QtClock clock;
    TerminalUpdate observer(run);
    run.interrupt.listen(heedLater);
    const auto end =
        updateThroughInterface(run.bench, {[&]() -> std::optional<std::filesystem::path> { return path; },
                                           [](const std::filesystem::path&) {}, clock, observer});
    run.output.put(QStringLiteral("end"), wordOf(end));
    return exitCodeOf(end);
}

ExitCode runUnzip(CommandRun& run)
{
    Workbench& bench = run.bench;
    ZipArchive archive;
    PatientUnzip observer;
    const auto place = placeFor(bench.files, toPath(run.arguments.operands.at(1)));
    const auto result = unzip(archive, toPath(run.arguments.operands.at(0)), place, observer);
    run.output.put(QStringLiteral("end"), wordOf(result.end));
    if (const auto fault = messageOf(result, run.texts(), bench.files))
        bench.prompts.error(*fault);
    switch (result.end) {
    case UnzipEnd::unpacked:
        run.output.put(QStringLiteral("folder"), run.arguments.operands.at(1));
        return ExitCode::done;
    case UnzipEnd::notPlaced:
        return ExitCode::notAllWritten;
    case UnzipEnd::missing:
        return ExitCode::fileTrouble;
    default:
        return ExitCode::damagedData;
    }
}

} // namespace karvo
