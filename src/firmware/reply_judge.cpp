#include "firmware/reply_judge.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace karvo
{

namespace
{

constexpr std::uint8_t startByte = 0x1B;
constexpr std::uint8_t token = 0x0E;
constexpr std::size_t sequencePlace = 1;
constexpr std::size_t tokenPlace = 4;
constexpr std::size_t headLength = 5;
constexpr std::size_t shortestBody = 2; // command and status
constexpr std::size_t longestBody = 275;
constexpr std::uint8_t done = 0x00;

// How long the whole reply is with which the bytes begin; 0 when they begin with none.
std::size_t replyLength(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() <= headLength || bytes[0] != startByte || bytes[tokenPlace] != token)
        return 0;
    const std::size_t body = bytes[2] * std::size_t{256} + bytes[3];
    const std::size_t length = headLength + body + 1;
    if (body < shortestBody || body > longestBody || bytes.size() < length)
        return 0;
    const auto whole = bytes.first(length);
    const auto check = std::accumulate(whole.begin(), whole.end(), std::uint8_t{0}, std::bit_xor<>());
    return check == 0 ? length : 0;
}

} // namespace

void ReplyJudge::take(const Bytes& message, const Bytes& received)
{
    messages_.push_back(message);
    verdicts_.push_back(received.empty() ? ReplyVerdict::missing : ReplyVerdict::damaged);
    unread_.insert(unread_.end(), received.begin(), received.end());
    std::size_t read = 0;
    for (std::size_t at = 0; at < unread_.size();) {
        const auto rest = std::span(unread_).subspan(at);
        const auto length = replyLength(rest);
        if (length != 0)
            note(rest.first(length));
        at += std::max<std::size_t>(length, 1);
        read = length != 0 ? at : read;
    }
    // No reply is as long as this: what lies further back begins none that is still to be completed.
    constexpr std::size_t mostUnread = headLength + longestBody + 1;
    read = std::max(read, unread_.size() - std::min(unread_.size(), mostUnread));
    unread_.erase(unread_.begin(), unread_.begin() + static_cast<std::ptrdiff_t>(read));
}

void ReplyJudge::note(std::span<const std::uint8_t> reply)
{
    for (std::size_t i = messages_.size(); i-- > 0;) {
        const Bytes& message = messages_[i];
        if (message[sequencePlace] != reply[sequencePlace])
            continue;
        const bool isEcho = std::equal(message.begin(), message.end(), reply.begin(), reply.end());
        const bool isFirst = verdicts_[i] == ReplyVerdict::missing || verdicts_[i] == ReplyVerdict::damaged;
        const bool isGood = reply[headLength] == message[headLength] && reply[headLength + 1] == done;
        if (!isEcho && isFirst)
            verdicts_[i] = isGood ? ReplyVerdict::accepted : ReplyVerdict::refused;
        return;
    }
}

} // namespace karvo
