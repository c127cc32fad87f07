#include "firmware/upload.h"

#include "firmware/reply_wait.h"
#include "firmware/stk500.h"
#include "link/exchange.h"
#include "program/path_text.h"
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

// What each message is answered with, in bytes. The answer to a chip erase is shorter than that: its wait
// always lasts the whole time-out.
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
    void addParameter(std::uint8_t parameter)
    {
        messages.push_back(
            {UploadPhase::parameters, stk500::getParameter(++sequence_, parameter), parameterReply});
    }
    void addLeave(UploadPhase phase)
    {
        messages.push_back(
            {phase, stk500::leaveProgrammingMode(++sequence_, stk500::controllerInit), shortReply});
    }
    void addPage(const FlashPage& page)
    {
        messages.push_back({UploadPhase::pages, stk500::programFlashPage(++sequence_, page), shortReply});
    }

    std::vector<PlannedMessage> messages;

private:
    unsigned sequence_ = 0;
};

Text hexText(const Bytes& bytes)
{
    constexpr TextView digits = u"0123456789ABCDEF";
    Text text;
    for (const auto byte : bytes) {
        if (!text.empty())
            text += u' ';
        text += digits[byte / 16U];
        text += digits[byte % 16U];
    }
    return text;
}

// A missing reply only costs its time.
ReplyEnd sendMessage(Link& link, const PlannedMessage& message, UploadReport& report)
{
    link.state.lastReply.clear();
    link.state.outgoingFrame = message.bytes;
    link.port.write(link.state.outgoingFrame);
    const auto end = awaitReply(link, message.expectedReply);
    report.steps.push_back({message.phase, message.bytes, message.expectedReply, link.state.lastReply});
    return end;
}

UploadEnd sendPlan(Link& link, const std::vector<PlannedMessage>& plan, UploadReport& report,
                   UploadObserver& observer)
{
    const auto isPage = [](const PlannedMessage& message) { return message.phase == UploadPhase::pages; };
    const auto pages = static_cast<std::size_t>(std::count_if(plan.begin(), plan.end(), isPage));
    std::size_t page = 0;
    for (const PlannedMessage& message : plan) {
        if (!report.steps.empty() && observer.stopRequested())
            return UploadEnd::stopped;
        page += isPage(message) ? 1U : 0U;
        observer.showUpload({message.phase, page, pages});
        const auto end = sendMessage(link, message, report);
        observer.showStep(report.steps.back());
        if (end == ReplyEnd::ended)
            return UploadEnd::ended;
        if (end == ReplyEnd::lineLost)
            return UploadEnd::lineLost;
    }
    return UploadEnd::sent;
}

} // namespace

std::size_t UploadReport::pagesSent() const
{
    return static_cast<std::size_t>(std::count_if(
        steps.begin(), steps.end(), [](const UploadStep& step) { return step.phase == UploadPhase::pages; }));
}

std::size_t UploadReport::missingReplies() const
{
    return static_cast<std::size_t>(
        std::count_if(steps.begin(), steps.end(), [](const UploadStep& step) { return step.isMissing(); }));
}

std::vector<PlannedMessage> uploadPlan(const HexImage& image)
{
    Plan plan;
    plan.add(UploadPhase::signOn, signOnReply, stk500::signOn);
    for (const auto parameter : parameters)
        plan.addParameter(parameter);
    plan.add(UploadPhase::settings, shortReply, stk500::setResetPolarity);
    plan.add(UploadPhase::settings, shortReply, stk500::setControllerInit);
    plan.add(UploadPhase::settings, shortReply, stk500::enterProgrammingMode);
    plan.add(UploadPhase::fuses, dataReply, stk500::readLockBits);
    plan.add(UploadPhase::fuses, dataReply, stk500::readLowFuse);
    plan.add(UploadPhase::fuses, dataReply, stk500::readHighFuse);
    plan.addLeave(UploadPhase::fuses);
    plan.add(UploadPhase::fuses, dataReply, stk500::readExtendedFuse);
    plan.add(UploadPhase::erase, dataReply, stk500::chipErase);
    plan.addLeave(UploadPhase::erase);
    for (const FlashPage& page : image.pages())
        plan.addPage(page);
    return std::move(plan.messages);
}

std::optional<std::filesystem::path> chooseImage(Workbench& bench, const std::filesystem::path& folder)
{
    const LanguageTables& texts = bench.state.texts;
    auto path = bench.prompts.openFile({.title = texts.caption(Caption::uploadTitle),
                                        .folder = folder,
                                        .filter = texts.caption(Caption::hexFiles) + u" (*.hex *.HEX)",
                                        .extension = u"hex",
                                        .name = Text(proposedImage)});
    if (path && *path != notChosen)
        return path;
    bench.prompts.message(texts.message(Message::noFileChosen));
    return std::nullopt;
}

std::optional<HexImage> readHexFile(Workbench& bench, const std::filesystem::path& path)
{
    const LanguageTables& texts = bench.state.texts;
    const auto content = bench.files.readWhole(path, firmwareFileLimit);
    if (!content) {
        bench.prompts.message(texts.message(Message::cannotOpenFile) + u" " + pathText(path) + u" " +
                              texts.message(Message::cannotOpenFileAdvice));
        return std::nullopt;
    }
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
    UploadReport report{UploadEnd::sent, {}};
    report.end = sendPlan(link, uploadPlan(image), report, observer);
    if (report.end == UploadEnd::lineLost)
        bench.prompts.message(bench.state.texts.message(Message::lineLostInTransfer), PromptIcon::stop);
    return report;
}

Text uploadLog(const LanguageTables& texts, const UploadStep& step)
{
    Text log = u"> " + hexText(step.sent) + Text(lineBreak) + u"< " + hexText(step.reply);
    if (step.isMissing())
        log += (step.reply.empty() ? u"(" : u" (") + texts.caption(Caption::replyMissing) + u")";
    return log;
}

} // namespace karvo
