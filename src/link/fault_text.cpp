#include "link/fault_text.h"

#include "program/bytes.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::size_t mostBytesShown = 16; // more than these tell nobody more

bool isPrintable(std::uint8_t byte)
{
    return byte > 0x20 && byte < 0x7F;
}

Text shownReply(const Bytes& reply)
{
    const std::span<const std::uint8_t> shown(reply.data(), std::min(reply.size(), mostBytesShown));
    Text text;
    if (std::all_of(shown.begin(), shown.end(), isPrintable)) {
        text = joined({u"\"", textFromWindows1252(shown), u"\""});
    } else {
        for (const auto byte : shown)
            text += joined({text.empty() ? u"0x" : u" 0x", hexPair(byte)});
    }
    return joined({text, shown.size() < reply.size() ? u" ..." : u""});
}

} // namespace

Text noReplyText(const Link& link)
{
    const LinkState& state = link.state;
    Text extent = link.texts.message(Message::nothingReceived);
    if (state.arrivedBytes != 0) {
        extent = link.texts.message(Message::bytesOfReply,
                                    {textFromNumber(static_cast<long long>(state.arrivedBytes)),
                                     textFromNumber(static_cast<long long>(state.awaitedBytes))});
    }
    return joined({link.texts.message(Message::noReply), lineBreak, extent});
}

Text unknownDecoderText(const Link& link)
{
    return joined({link.texts.message(Message::unknownDecoder), lineBreak,
                   link.texts.message(Message::replyWas, {shownReply(link.state.lastReply)})});
}

} // namespace karvo
