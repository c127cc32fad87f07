#include "link/write.h"

#include "link/fault_text.h"
#include "link/identification.h"
#include "program/bytes.h"

namespace karvo
{

namespace
{

const Bytes writeCommand = {'E', 'W', 'S'};

constexpr int levelledCv = 99; // firmware below its level does not know this CV
constexpr int lowestFirmwareLevel = 3;
constexpr int restartCv = 161; // the decoder restarts instead of acknowledging it
constexpr int firstSilentCv = 243;
constexpr int lastSilentCv = 246;

Text resetQuestion(const Link& link)
{
    Text question;
    const auto add = [&](Message line) {
        question += (question.empty() ? Text() : Text(lineBreak)) + link.texts.message(line);
    };
    add(Message::resetQuestion1);
    add(Message::resetQuestion2);
    add(Message::resetQuestion3);
    if (link.state.typeCode != TypeCode::receiver) {
        add(Message::resetOfDecoder1);
        add(Message::resetOfDecoder2);
    }
    add(Message::resetQuestionLast);
    return question;
}

// KV07 and KV08 have captions of their own. Silence after "%" is told as what happened; silence after "EWS",
// when the interface has just answered, as what to do with the vehicle.
struct SilenceCaptions {
    Caption newerModels;
    Caption others;
};
constexpr SilenceCaptions silentInterface{Caption::noReplyToWriteKv07, Caption::noReplyToWrite};
constexpr SilenceCaptions silentDecoder{Caption::writeAgainKv07, Caption::writeAgain};

void tellNoReply(Link& link)
{
    link.state.timeOut = false;
    link.prompts.message(noReplyText(link));
}

WriteEnd reportSilence(Link& link, const SilenceCaptions& captions)
{
    const bool newer = isKv07OrKv08(link.state.typeCode);
    tellNoReply(link);
    link.view.showStatus(link.texts.caption(newer ? captions.newerModels : captions.others));
    return WriteEnd::noReply;
}

std::optional<WriteEnd> announceWrite(Link& link)
{
    switch (Exchange(link, writeCommand, ReplyLength::atLeastOne())) {
    case ExchangeEnd::ended:
        return WriteEnd::ended;
    case ExchangeEnd::timedOut:
        return reportSilence(link, silentDecoder);
    case ExchangeEnd::replied:
        break;
    }
    if (IsAck(link.state.lastReply))
        return std::nullopt;
    link.prompts.message(link.texts.message(Message::announcementRefused));
    return WriteEnd::commandRefused;
}

Bytes writeFrame(const WriteCommand& command)
{
    Bytes frame = {static_cast<std::uint8_t>(command.cv - 1), static_cast<std::uint8_t>(command.value)};
    frame.push_back(checkByte(frame));
    return frame;
}

WriteEnd sendValue(Link& link, const WriteCommand& command)
{
    switch (Exchange(link, writeFrame(command), ReplyLength::atLeastOne())) {
    case ExchangeEnd::ended:
        return WriteEnd::ended;
    case ExchangeEnd::timedOut:
        tellNoReply(link);
        link.view.showStatus(link.texts.menuCaption(writeTimeOutStatusEntry));
        return WriteEnd::unacknowledged;
    case ExchangeEnd::replied:
        break;
    }
    if (IsAck(link.state.lastReply)) {
        link.view.showStatus(link.texts.caption(Caption::writtenSuccessfully));
        return WriteEnd::written;
    }
    if (command.cv == restartCv)
        return WriteEnd::unconfirmed;
    link.prompts.message(link.texts.message(Message::valueRefused) + Text(lineBreak) + u"CV " +
                         textFromNumber(command.cv) + u" " + link.texts.message(Message::cvNotWritten));
    return WriteEnd::frameRefused;
}

void noticeSuccess(Link& link, int cv)
{
    const bool suppressed = link.state.seriesUnderWay || link.state.manyUnderWay;
    const bool silent = cv == resetCv || (cv >= firstSilentCv && cv <= lastSilentCv);
    if (suppressed || silent || !link.state.noticeAfterWrite)
        return;
    link.prompts.message(writtenNotice(cv, link.texts), PromptIcon::information);
}

// Only a receiver says by its acknowledge whether the reset has happened.
void tellAfterReset(Link& link, WriteEnd end)
{
    Message message = Message::resetSent;
    if (link.state.typeCode == TypeCode::receiver)
        message = end == WriteEnd::written ? Message::resetAcknowledged : Message::resetNotAcknowledged;
    link.prompts.message(link.texts.message(message), PromptIcon::information);
}

WriteEnd send(Link& link, const WriteCommand& command)
{
    if (!EnsurePortOpen(link))
        return WriteEnd::ended;
    if (const auto end = identifyForWrite(link))
        return *end;
    if (!command.onlyFor.empty() && command.onlyFor != link.state.identification)
        return WriteEnd::otherDecoder;
    if (const auto end = announceWrite(link))
        return *end;
    return sendValue(link, command);
}

constexpr std::chrono::milliseconds pauseAfterWrite{100};

// No notices of success as long as it lives.
class SeriesUnderWay
{
public:
    explicit SeriesUnderWay(LinkState& state) : state_(state) { state_.seriesUnderWay = true; }
    ~SeriesUnderWay() { state_.seriesUnderWay = false; }
    SeriesUnderWay(const SeriesUnderWay&) = delete;
    SeriesUnderWay& operator=(const SeriesUnderWay&) = delete;

private:
    LinkState& state_;
};

} // namespace

Text writtenNotice(int cv, const LanguageTables& texts)
{
    Text cvText = u"CV " + textFromNumber(cv) + u"  ";
    if (cv == firstServoTakeOverCv)
        cvText = u"CV11 + CV12  ";
    else if (cv == secondServoTakeOverCv)
        cvText = u"CV13 + CV14  ";
    return cvText + texts.message(Message::writtenNotice);
}

std::optional<WriteEnd> guardWrite(Link& link, const WriteCommand& command)
{
    if (command.cv == resetCv && !link.prompts.question(resetQuestion(link)))
        return WriteEnd::refusedByUser;
    if (command.cv == levelledCv && command.firmwareLevel < lowestFirmwareLevel) {
        link.prompts.message(link.texts.message(Message::cv99NeedsFirmware));
        return WriteEnd::guarded;
    }
    return std::nullopt;
}

std::optional<WriteEnd> identifyForWrite(Link& link)
{
    switch (IdentifyDecoder(link, ReadOnlyReceiver::refused)) {
    case IdentificationEnd::ended:
        return WriteEnd::ended;
    case IdentificationEnd::timedOut:
        return reportSilence(link, silentInterface);
    case IdentificationEnd::unknown:
        link.prompts.message(link.texts.message(Message::nothingWritten));
        return WriteEnd::unknownDecoder;
    case IdentificationEnd::identified:
        break;
    }
    return std::nullopt;
}

WriteEnd writeCv(Link& link, const WriteCommand& command)
{
    if (!command.guarded) {
        if (const auto end = guardWrite(link, command))
            return *end;
    }
    link.view.showStatus(link.texts.caption(Caption::writingCv) + textFromNumber(command.cv));
    const auto end = send(link, command);
    if (end != WriteEnd::written && end != WriteEnd::unconfirmed)
        breakLineRun(link.state);
    if (end == WriteEnd::written)
        noticeSuccess(link, command.cv);
    if (command.cv == resetCv && (end == WriteEnd::written || end == WriteEnd::frameRefused))
        tellAfterReset(link, end);
    return end;
}

std::array<WriteEnd, seriesLength> writeSeries(Link& link, const std::array<int, seriesLength>& values,
                                               const Text& onlyFor)
{
    std::array<WriteEnd, seriesLength> ends;
    ends.fill(WriteEnd::ended);
    const SeriesUnderWay quiet(link.state);
    for (std::size_t i = 0; i < seriesLength; ++i) {
        const int cv = firstSeriesCv + static_cast<int>(i);
        link.view.showStatus(link.view.statusText() + u" " + textFromNumber(cv) + u" ");
        ends[i] = writeCv(link, {.cv = cv, .value = values[i], .onlyFor = onlyFor});
        if (ends[i] == WriteEnd::ended || link.wait.pause(pauseAfterWrite) == WaitResult::ended)
            break;
    }
    return ends;
}

} // namespace karvo
