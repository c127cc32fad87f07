// A programming interface with a decoder on it, as a plain state machine over time: bytes in, bytes out with the moment
// at which each becomes readable. It knows no port and no clock: whoever carries its bytes tells it the time.
// The wire it speaks is described in docs/protocol.md; its constants are its own.
#pragma once

#include "simulator/decoder.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace karvo::sim {

// Since an arbitrary start.
using Time = std::chrono::microseconds;

enum class Pace {
    line, // 4800 baud in both directions, 10 bits a byte
    none  // everything at once
};

enum class Fault {
    none,
    silence,               // answers nothing at all
    unknownIdentification, // answers "%" with "99"
    wrongCheckByte,        // the block's check byte is off by one
    shortBlock,            // the block ends 100 bytes early
    lateBlock,             // the block starts only after 12 s
    tornBlock,             // the block comes in pieces with pauses of 300 ms
    refusedCommand,        // answers 21 (NAK) where 6 is due
    hangUp                 // the line goes away in the middle of the block
};

// The name used on the command line, such as "wrong-check-byte"; nothing for an unknown name.
std::optional<Fault> faultByName(std::string_view name);
std::vector<std::string_view> faultNames();

class Simulator
{
public:
    Simulator(Decoder decoder, Pace pace, Fault fault);

    // Bytes sent by the program, the first of them starting on the line at `now`.
    void receive(std::span<const std::uint8_t> bytes, Time now);

    // Bytes that have become readable by `now`, in order.
    std::vector<std::uint8_t> take(Time now);

    // When the next byte becomes readable or the hang-up happens; nothing while nothing is on its way.
    std::optional<Time> nextEvent() const;

    bool hungUp(Time now) const;

    // The adapter is plugged in again, or the port was closed and opened: what was on its way is lost.
    void reconnect();

    // A script may change the fault between two exchanges.
    void setFault(Fault fault);

    const Decoder& decoder() const { return decoder_; }

private:
    struct Outgoing {
        Time due;
        std::uint8_t byte;
    };

    Decoder decoder_;
    Pace pace_;
    Fault fault_;
    std::vector<std::uint8_t> command_;
    std::deque<Outgoing> outgoing_;
    Time lineFree_{};
    std::optional<Time> hangUpAt_;
    bool awaitsFrame_ = false;
};

} // namespace karvo::sim
