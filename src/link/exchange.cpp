#include "link/exchange.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::uint8_t acknowledge = 6;
constexpr std::chrono::milliseconds identificationGap{50};

// A line on which nothing comes for this long is quiet; the longest reply is over after as many turns.
constexpr std::chrono::milliseconds quietTime{100};
constexpr int longestRestTurns = 30;

Message causeOf(PortFault fault)
{
    switch (fault) {
    case PortFault::absent:
        return Message::portAbsent;
    case PortFault::busy:
        return Message::portBusy;
    case PortFault::denied:
        return Message::portDenied;
    case PortFault::notSerial:
        return Message::portNotSerial;
    case PortFault::unknown:
        break;
    }
    return Message::portRefusedUnknown;
}

void addLine(Text& text, TextView before, const Text& line)
{
    if (!line.empty())
        text += Text(before) + line;
}

// The system's own words first; behind them which port it is, why, what to do, and that the program ends.
Text portRefusedText(const Link& link, const PortError& error)
{
    const Text paragraph = Text(lineBreak) + Text(lineBreak);
    const Text port = u"COM" + textFromNumber(link.state.portNumber);
    const bool named = error.device.empty() || error.device == port;
    const auto which = named ? Message::portRefusedByName : Message::portRefused;
    Text text = error.description;
    addLine(text, paragraph, link.texts.message(which, {port, error.device}));
    addLine(text, lineBreak, link.texts.message(causeOf(error.fault)));
    if (!error.accessGroup.empty())
        addLine(text, lineBreak, link.texts.message(Message::accessGroupAdvice, {error.accessGroup}));
    addLine(text, paragraph, link.texts.message(Message::programEnds));
    if (link.unsavedWorkKept)
        addLine(text, lineBreak, link.texts.message(Message::unsavedWorkKept));
    return text;
}

bool isStopped(const Link& link)
{
    return link.state.readUnderWay && link.stopRequested != nullptr && *link.stopRequested;
}

// What still comes meets a closed port.
ExchangeEnd stopRead(Link& link)
{
    link.port.close();
    link.state.replyCutOff = true;
    return ExchangeEnd::ended;
}

// The interface goes on sending what it has begun: the next reply must not begin with it.
bool letRestPass(Link& link)
{
    for (int turn = 0; link.state.replyCutOff && turn < longestRestTurns; ++turn) {
        link.port.readAll();
        if (link.wait.pause(quietTime) == WaitResult::ended)
            return false;
        link.state.replyCutOff = link.port.bytesWaiting() > 0;
    }
    link.state.replyCutOff = false;
    return true;
}

WaitResult waitForCount(Link& link, ReplyLength replyLength)
{
    const bool exact = replyLength.rule == ReplyLength::Rule::exactly;
    const std::size_t least = replyLength.rule == ReplyLength::Rule::atLeast ? replyLength.count : 1;
    const auto arrived = [&] {
        const auto waiting = link.port.bytesWaiting();
        link.state.arrivedBytes = std::max(link.state.arrivedBytes, waiting);
        if (exact)
            link.view.showProgress(waiting, replyLength.count);
        return isStopped(link) || !link.port.isOpen() ||
               (exact ? waiting == replyLength.count : waiting >= least);
    };
    const auto result = link.wait.until(arrived, link.state.timeOutInterval);
    if (exact)
        link.view.showProgress(0, 0);
    return result;
}

// After the first byte of an identification: its second, unless the line stays quiet.
WaitResult waitForRestOfIdentification(Link& link, std::size_t count)
{
    const auto arrived = [&] { return !link.port.isOpen() || link.port.bytesWaiting() >= count; };
    const auto result = link.wait.until(arrived, identificationGap);
    return result == WaitResult::timedOut ? WaitResult::met : result;
}

void noteUse(Link& link)
{
    LinkState& state = link.state;
    const auto now = link.wait.now();
    if (!state.lastUse || now - *state.lastUse > longestPauseOfRun)
        ++state.run;
    state.lastUse = now;
}

bool reportRefusedPort(Link& link, const PortError& error)
{
    link.prompts.message(portRefusedText(link, error), PromptIcon::stop);
    link.prompts.endProgram();
    return false;
}

} // namespace

std::optional<PortError> tryToOpen(LinkState& state, SerialPort& port)
{
    if (state.otherSettings) {
        port.close();
        port.setSettings(LineSettings{});
        state.otherSettings = false;
    }
    if (port.isOpen())
        return std::nullopt;
    breakLineRun(state);
    port.setPortNumber(state.portNumber);
    return port.open();
}

bool EnsurePortOpen(Link& link)
{
    const auto error = tryToOpen(link.state, link.port);
    return error ? reportRefusedPort(link, *error) : letRestPass(link);
}

bool openWith(Link& link, const LineSettings& settings)
{
    if (link.port.isOpen())
        link.port.close();
    breakLineRun(link.state);
    link.state.otherSettings = true;
    link.port.setSettings(settings);
    link.port.setPortNumber(link.state.portNumber);
    const auto error = link.port.open();
    return !error || reportRefusedPort(link, *error);
}

ExchangeEnd Exchange(Link& link, const Bytes& command, ReplyLength replyLength, Pointer pointer)
{
    if (isStopped(link))
        return stopRead(link);
    link.port.readAll();
    if (pointer == Pointer::hourglass)
        link.view.showHourglass(true);
    link.state.timeOut = false;
    link.state.arrivedBytes = 0;
    link.state.awaitedBytes = replyLength.count;
    link.state.outgoingFrame = command;
    link.port.write(link.state.outgoingFrame);

    auto result = waitForCount(link, replyLength);
    if (result == WaitResult::met && replyLength.rule == ReplyLength::Rule::identification &&
        !isStopped(link))
        result = waitForRestOfIdentification(link, replyLength.count);
    const bool hungUp = !link.port.isOpen();
    link.state.lastReply = link.port.readAll();
    if (result != WaitResult::met || hungUp)
        breakLineRun(link.state);
    if (result == WaitResult::ended)
        return ExchangeEnd::ended;
    if (isStopped(link))
        return stopRead(link);
    link.state.timeOut = result == WaitResult::timedOut || hungUp;
    if (link.state.timeOut)
        return ExchangeEnd::timedOut;
    noteUse(link);
    link.state.interfaceAnswered = true;
    return ExchangeEnd::replied;
}

ReplyEnd awaitReply(Link& link, std::size_t count)
{
    const auto arrived = [&] { return !link.port.isOpen() || link.port.bytesWaiting() >= count; };
    const auto result = link.wait.until(arrived, link.state.timeOutInterval);
    const bool lost = !link.port.isOpen();
    link.state.lastReply = link.port.readAll();
    if (result == WaitResult::ended)
        return ReplyEnd::ended;
    if (lost)
        return ReplyEnd::lineLost;
    return result == WaitResult::met ? ReplyEnd::replied : ReplyEnd::timedOut;
}

bool lineRunLasts(const Link& link, int run)
{
    const LinkState& state = link.state;
    return state.run == run && state.lastUse && link.port.isOpen() && !state.otherSettings &&
           link.wait.now() - *state.lastUse <= longestPauseOfRun;
}

void breakLineRun(LinkState& state)
{
    state.lastUse.reset();
}

bool IsAck(const Bytes& reply)
{
    return !reply.empty() && reply.front() == acknowledge;
}

} // namespace karvo
