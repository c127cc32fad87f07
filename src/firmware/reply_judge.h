// What a boot loader's replies say of the messages that they answer (docs/protocol.md, "The boot loader").
#pragma once

#include "program/text.h"

#include <vector>

namespace karvo
{

enum class ReplyVerdict {
    accepted, // a whole reply with the message's sequence number and command, and the status 0
    missing,  // not one byte
    damaged,  // bytes, but no whole reply to this message among them
    refused   // a whole reply with another command or status
};

// Replies are found by their own size field and check byte, not by where one wait ended and the next began,
// and belong to the message whose sequence number they carry: a late one still counts.
class ReplyJudge
{
public:
    // The next message, and what came while its reply was awaited.
    void take(const Bytes& message, const Bytes& received);

    // Of each message, in order. A reply that comes later may still change them.
    const std::vector<ReplyVerdict>& verdicts() const { return verdicts_; }

private:
    void note(std::span<const std::uint8_t> reply);

    std::vector<Bytes> messages_;
    std::vector<ReplyVerdict> verdicts_;
    Bytes unread_; // behind the last whole reply
};

} // namespace karvo
