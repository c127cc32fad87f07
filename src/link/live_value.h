// A value that the decoder follows at once and does not store (docs/protocol.md, "Live values").
#pragma once

#include "link/link.h"

namespace karvo
{

struct LiveValue {
    int channel; // 1 to 3
    int value;   // 0 to 255
};

enum class LiveEnd {
    sent,           // whatever the decoder replied to the packet: it stands in LinkState::lastReply
    noReply,        // reported
    unknownDecoder, // no decoder that takes live values; nothing was sent, and nothing is reported
    refused,        // reported; the packet was not sent
    lineLost,       // the port is closed, or hung up during the exchange; not reported
    ended           // the program is being closed
};

// What happens when the port is closed: what a person asked for opens it, which ends the program where that
// fails; what goes on by itself does not.
enum class ClosedPort { opened, leftClosed };

// Identifies the decoder, announces the value and sends it, once. The port stays open.
LiveEnd sendLiveValue(Link& link, const LiveValue& value, ClosedPort closedPort);

} // namespace karvo
