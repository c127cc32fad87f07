#include "firmware/upload.h"

#include "firmware/firmware_file.h"
#include "firmware/stk500.h"
#include "link/exchange.h"
#include "workbench/line_use.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr LineSettings bootLoaderLine{115200, Parity::none, 1};

constexpr TextView proposedImage = u"KV07_29August2022_Alle_Versionen.hex";
constexpr TextView notChosen = u"*.kvr"; // to the letter, though a HEX file is proposed

// Top-card detect, hardware version, software version, SCK duration, controller init: in the order, and with
// the repetitions, that the boot loaders have always been asked in.
constexpr std::uint8_t parameters[] = {0x9A, 0x90, 0x91, 0x92, 0x9A, 0x98, 0x90, 0x9A, 0x90, 0x9F};

// With how many bytes each wait ends. The answer to a chip erase is shorter than that: its wait always lasts
// the whole time-out.
constexpr std::size_t signOnReply = 17;
constexpr std::size_t parameterReply = 9;
constexpr std::size_t shortReply = 8;
constexpr std::size_t dataReply = 10;

class Plan
{
public:
    void add(UploadPhase phase, std::size_t expectedReply, Bytes (*build)(unsigned))
    {
        messages.push_back({phase, build(++sequence_), expectedReply});
    }
    // What a loader may answer with an error, or not at all, and be sound all the same.
    void addRemark(UploadPhase phase, std::size_t expectedReply, Bytes (*build)(unsigned))
    {
        messages.push_back({phase, build(++sequence_), expectedReply, false});
    }
    void addParameter(std::uint8_t parameter)
    {
        messages.push_back(
            {UploadPhase::parameters, stk500::getParameter(++sequence_, parameter), parameterReply, false});
    }
    void addLeave(UploadPhase phase)
    {
        messages.push_back(
            {phase, stk500::leaveProgrammingMode(++sequence_, stk500::controllerInit), shortReply, false});
    }
    void addPage(const FlashPage& page)
    {
        messages.push_back({UploadPhase::pages, stk500::programFlashPage(++sequence_, page), shortReply});
    }

    std::vector<PlannedMessage> messages;

private:
    unsigned sequence_ = 0;
};

// Tells the observer once of each time that the loader falls silent. Once it has answered, what a sound
// loader need not answer is no silence.
class SilenceWatch
{
public:
    void note(const UploadReport& report, UploadObserver& observer)
    {
        constexpr int worthTelling = 3; // messages
        const UploadStep& step = report.steps.back();
        if (!step.reply.empty()) {
            silent_ = 0;
        } else if ((step.message.countsForVerdict || !report.anyReply()) && ++silent_ == worthTelling)
            observer.showSilence(report.erase());
    }

private:
    int silent_ = 0;
};

// A missing reply only costs its time.
ReplyEnd sendMessage(Link& link, const PlannedMessage& message)
{
    link.state.lastReply.clear();
    link.state.outgoingFrame = message.bytes;
    link.port.write(link.state.outgoingFrame);
    return awaitReply(link, message.expectedReply);
}

void noteReply(UploadReport& report, ReplyJudge& judge, const PlannedMessage& message, const Bytes& reply)
{
    judge.take(message.bytes, reply);
    report.steps.push_back({message, reply, ReplyVerdict::missing});
    for (std::size_t i = 0; i < report.steps.size(); ++i)
        report.steps[i].verdict = judge.verdicts()[i];
}

UploadEnd sendPlan(Workbench& bench, const std::vector<PlannedMessage>& plan, UploadReport& report,
                   UploadObserver& observer)
{
    Link link = bench.link();
    ReplyJudge judge;
    SilenceWatch silence;
    std::size_t page = 0;
    for (const PlannedMessage& message : plan) {
        if (!report.steps.empty() && observer.stopRequested())
            return UploadEnd::stopped;
        bench.state.firmwareAtRisk = bench.state.firmwareAtRisk || message.phase == UploadPhase::erase;
        page += message.phase == UploadPhase::pages ? 1U : 0U;
        observer.showUpload({message.phase, page, report.pages});
        const auto end = sendMessage(link, message);
        noteReply(report, judge, message, link.state.lastReply);
        observer.showStep(report.steps.back());
        if (end == ReplyEnd::ended)
            return UploadEnd::ended;
        if (end == ReplyEnd::lineLost)
            return UploadEnd::lineLost;
        silence.note(report, observer);
    }
    return UploadEnd::sent;
}

} // namespace

std::size_t UploadReport::pagesAccepted() const
{
    return static_cast<std::size_t>(std::count_if(steps.begin(), steps.end(), [](const UploadStep& step) {
        return step.isPage() && step.isAccepted();
    }));
}

bool UploadReport::anyReply() const
{
    return std::any_of(steps.begin(), steps.end(),
                       [](const UploadStep& step) { return !step.reply.empty(); });
}

EraseState UploadReport::erase() const
{
    const auto sent = std::find_if(steps.begin(), steps.end(), [](const UploadStep& step) {
        return step.message.phase == UploadPhase::erase;
    });
    if (sent == steps.end())
        return EraseState::untouched;
    return sent->isAccepted() ? EraseState::erased : EraseState::mayBeErased;
}

bool UploadReport::isAccepted() const
{
    return end == UploadEnd::sent && std::all_of(steps.begin(), steps.end(), [](const UploadStep& step) {
               return !step.message.countsForVerdict || step.isAccepted();
           });
}

std::vector<PlannedMessage> uploadPlan(const HexImage& image)
{
    Plan plan;
    plan.add(UploadPhase::signOn, signOnReply, stk500::signOn);
    for (const auto parameter : parameters)
        plan.addParameter(parameter);
    plan.addRemark(UploadPhase::settings, shortReply, stk500::setResetPolarity);
    plan.addRemark(UploadPhase::settings, shortReply, stk500::setControllerInit);
    plan.add(UploadPhase::settings, shortReply, stk500::enterProgrammingMode);
    plan.addRemark(UploadPhase::fuses, dataReply, stk500::readLockBits);
    plan.addRemark(UploadPhase::fuses, dataReply, stk500::readLowFuse);
    plan.addRemark(UploadPhase::fuses, dataReply, stk500::readHighFuse);
    plan.addLeave(UploadPhase::fuses);
    plan.addRemark(UploadPhase::fuses, dataReply, stk500::readExtendedFuse);
    plan.add(UploadPhase::erase, dataReply, stk500::chipErase);
    plan.addLeave(UploadPhase::erase);
    for (const FlashPage& page : image.pages())
        plan.addPage(page);
    return std::move(plan.messages);
}

std::optional<std::filesystem::path> chooseImage(Prompts& prompts, const LanguageTables& texts,
                                                 const std::filesystem::path& folder)
{
    auto path = prompts.openFile({.title = texts.caption(Caption::uploadTitle),
                                  .folder = folder,
                                  .filter = texts.caption(Caption::hexFiles) + u" (*.hex *.HEX)",
                                  .extension = u"hex",
                                  .name = Text(proposedImage)});
    if (path && *path != notChosen)
        return path;
    prompts.message(texts.message(Message::noFileChosen));
    return std::nullopt;
}

std::optional<HexImage> readHexFile(Workbench& bench, const std::filesystem::path& path)
{
    const LanguageTables& texts = bench.state.texts;
    const auto content = readFirmwareFile(bench, path);
    if (!content)
        return std::nullopt;
    auto parsed = parseHexImage(*content);
    if (auto* const image = std::get_if<HexImage>(&parsed))
        return std::move(*image);
    const auto& refusal = std::get<FileRefusal>(parsed);
    if (refusal.fault != FileFault::otherFirstLine)
        bench.prompts.message(refusalText(texts, path, refusal));
    else if (bench.state.tellsWrongFirstLine)
        bench.prompts.message(texts.message(Message::noFirmwareFile) + u"!");
    return std::nullopt;
}

UploadReport uploadImage(Workbench& bench, const HexImage& image, UploadObserver& observer)
{
    const LineUse line(bench, LineTask::lasting);
    if (!line.isGranted())
        return {UploadEnd::lineBusy, {}};
    Link link = bench.link();
    if (!openWith(link, bootLoaderLine))
        return {UploadEnd::portRefused, {}};
    UploadReport report{UploadEnd::sent, {}, image.pages().size()};
    bench.state.firmwareAtRisk = false;
    report.end = sendPlan(bench, uploadPlan(image), report, observer);
    if (report.end == UploadEnd::lineLost)
        bench.prompts.message(bench.state.texts.message(report.erase() == EraseState::untouched
                                                            ? Message::lineLostBeforeErase
                                                            : Message::lineLostInTransfer),
                              PromptIcon::stop);
    return report;
}

} // namespace karvo
