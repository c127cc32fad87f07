#include "cli/firmware_commands.h"

#include "cli/terminal.h"
#include "firmware/interface_update.h"
#include "firmware/unpack.h"
#include "firmware/update_checks.h"
#include "firmware/upload_verdict.h"
#include "platform/qt_clock.h"
#include "platform/text_conversion.h"
#include "platform/zip_archive.h"

namespace karvo
{

namespace
{

class TerminalUpload : public UploadObserver
{
public:
    TerminalUpload(View& view, const LanguageTables& texts) : view_(view), texts_(texts) {}
    ~TerminalUpload() override { view_.showProgress(0, 0); }
    TerminalUpload(const TerminalUpload&) = delete;
    TerminalUpload& operator=(const TerminalUpload&) = delete;

    void showUpload(const UploadProgress& progress) override
    {
        view_.showProgress(progress.page == 0 ? 0 : progress.page - 1, progress.pages);
    }
    void showStep(const UploadStep& /*step*/) override {}
    void showSilence(EraseState /*erase*/) override
    {
        view_.showStatus(texts_.caption(Caption::noLoaderReplies));
    }
    bool stopRequested() override { return false; }

private:
    View& view_;
    const LanguageTables& texts_;
};

class TerminalUpdate : public UpdateObserver
{
public:
    explicit TerminalUpdate(View& view) : view_(view) {}

    void showHeader(const Text& header) override { view_.showStatus(header); }
    void showStart(const Text& text) override { view_.showStatus(text); }
    void showRecords(std::size_t sent, std::size_t total) override { view_.showProgress(sent, total); }
    void showEnd() override { view_.showProgress(0, 0); }
    bool stopRequested() override { return false; }

private:
    View& view_;
};

class PatientUnzip : public UnzipObserver
{
public:
    bool goOn(std::uint64_t) override { return true; }
};

Text numberText(std::size_t number)
{
    return textFromNumber(static_cast<long long>(number));
}

Text uploadPlanText(const LanguageTables& texts, const HexImage& image)
{
    const auto plan = uploadPlan(image);
    std::size_t bytes = 0;
    for (const PlannedMessage& message : plan)
        bytes += message.bytes.size();
    const Text numbers[] = {numberText(image.pages().size()), numberText(plan.size()), numberText(bytes)};
    return filledIn(texts.caption(Caption::uploadPlan), numbers);
}

Text updatePlanText(const LanguageTables& texts, const UpdateFile& file)
{
    constexpr std::size_t bytesOfARecord = updateRecordSize + 2; // with its sum
    const std::size_t records = file.records.size();
    const Text numbers[] = {numberText(records),
                            numberText((records + recordsOfABlock - 1) / recordsOfABlock),
                            numberText(records * bytesOfARecord)};
    return filledIn(texts.caption(Caption::updatePlan), numbers);
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

ExitCode runFlash(Workbench& bench, const CliArguments& arguments)
{
    const auto image = readHexFile(bench, toPath(arguments.operands.front()));
    if (!image)
        return ExitCode::fileTrouble;
    if (arguments.dryRun) {
        printLine(stdout, uploadPlanText(bench.state.texts, *image));
        return ExitCode::done;
    }
    TerminalUpload observer(bench.view, bench.state.texts);
    const auto report = uploadImage(bench, *image, observer);
    if (!report.steps.empty())
        printLines(stdout, uploadVerdict(bench.state.texts, report));
    return exitCodeOf(report);
}

ExitCode runUpdate(Workbench& bench, const CliArguments& arguments)
{
    const auto path = toPath(arguments.operands.front());
    if (arguments.dryRun) {
        const auto file = readUpdateFile(bench, path);
        if (!file)
            return ExitCode::fileTrouble;
        printLine(stdout, updatePlanText(bench.state.texts, *file));
        printLine(stdout, updateHeaderText(bench.state.texts, *file));
        for (const Text& finding : unusualIn(bench.state.texts, *file))
            printLine(stdout, finding);
        return ExitCode::done;
    }
    const QtClock clock;
    TerminalUpdate observer(bench.view);
    return exitCodeOf(
        updateThroughInterface(bench, {[&]() -> std::optional<std::filesystem::path> { return path; },
                                       [](const std::filesystem::path&) {}, clock, observer}));
}

ExitCode runUnzip(Workbench& bench, const CliArguments& arguments)
{
    ZipArchive archive;
    PatientUnzip observer;
    const auto place = placeFor(bench.files, toPath(arguments.operands.at(1)));
    const auto result = unzip(archive, toPath(arguments.operands.at(0)), place, observer);
    if (const auto fault = messageOf(result, bench.state.texts))
        bench.prompts.error(*fault);
    switch (result.end) {
    case UnzipEnd::unpacked:
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
