#include "link/live_value.h"

#include "link/fault_text.h"
#include "link/identification.h"
#include "program/bytes.h"

#include <optional>

namespace karvo
{

namespace
{

const Bytes identifyCommand = {'%'};
const Bytes liveCommand = {'E', 'W', 'M'};
constexpr std::size_t identificationLength = 2;

std::optional<LiveEnd> exchange(Link& link, const Bytes& command, ReplyLength length)
{
    switch (Exchange(link, command, length)) {
    case ExchangeEnd::ended:
        return LiveEnd::ended;
    case ExchangeEnd::timedOut:
        link.state.timeOut = false;
        if (!link.port.isOpen())
            return LiveEnd::lineLost;
        link.prompts.message(noReplyText(link));
        return LiveEnd::noReply;
    case ExchangeEnd::replied:
        break;
    }
    return std::nullopt;
}

std::optional<LiveEnd> identify(Link& link)
{
    if (const auto end = exchange(link, identifyCommand, ReplyLength::atLeast(identificationLength)))
        return end;
    noteWhoAnswered(link);
    const auto typeCode = typeCodeOf(link.state.lastReply, ReadOnlyReceiver::refused);
    if (!typeCode || *typeCode == TypeCode::trailer) // a trailer has nothing that could follow
        return LiveEnd::unknownDecoder;
    link.state.typeCode = *typeCode;
    return std::nullopt;
}

std::optional<LiveEnd> announce(Link& link)
{
    if (const auto end = exchange(link, liveCommand, ReplyLength::atLeastOne()))
        return end;
    if (IsAck(link.state.lastReply))
        return std::nullopt;
    breakLineRun(link.state);
    link.prompts.message(link.texts.message(Message::announcementRefused));
    return LiveEnd::refused;
}

Bytes packetOf(const LiveValue& value)
{
    Bytes packet = {static_cast<std::uint8_t>(value.channel), static_cast<std::uint8_t>(value.value)};
    packet.push_back(checkByte(packet));
    return packet;
}

} // namespace

LiveEnd sendLiveValue(Link& link, const LiveValue& value, ClosedPort closedPort)
{
    if (closedPort == ClosedPort::leftClosed && !link.port.isOpen())
        return LiveEnd::lineLost;
    if (!EnsurePortOpen(link))
        return LiveEnd::ended;
    if (const auto end = identify(link))
        return *end;
    if (const auto end = announce(link))
        return *end;
    return exchange(link, packetOf(value), ReplyLength::atLeastOne()).value_or(LiveEnd::sent);
}

} // namespace karvo
