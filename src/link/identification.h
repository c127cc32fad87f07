// Which decoder is on the line (docs/protocol.md, "The line").
#pragma once

#include "link/exchange.h"

#include <optional>

namespace karvo
{

enum class ReadOnlyReceiver { refused, accepted };

enum class IdentificationEnd {
    identified, // LinkState::typeCode and ::identification are set, ::lastReply is empty
    timedOut,   // not reported yet
    unknown,    // reported; the type code is unchanged
    ended       // as ExchangeEnd::ended
};

// The type code of a whole reply to "%".
std::optional<TypeCode> typeCodeOf(const Bytes& reply, ReadOnlyReceiver readOnlyReceiver);

// Bytes of a block read's reply, check byte included.
std::size_t blockReplyLength(TypeCode typeCode);

// Asks with "%" whether a decoder is there; its whole reply stands in LinkState::lastReply. The port must be
// open.
ExchangeEnd askForPresence(Link& link, Pointer pointer = Pointer::unchanged);

// Ends the line's run when the reply to "%" is not that of the decoder that was identified last.
void noteWhoAnswered(Link& link);

// Asks the interface for its decoder. The port must be open.
IdentificationEnd IdentifyDecoder(Link& link, ReadOnlyReceiver readOnlyReceiver,
                                  Pointer pointer = Pointer::unchanged);

} // namespace karvo
