// A programming interface with a decoder on it, as a plain state machine over time: bytes in, bytes out with
// the moment at which each becomes readable. It knows no port and no clock: whoever carries its bytes tells
// it the time. The wire it speaks is described in docs/protocol.md; its constants are its own.
#pragma once

#include "simulator/boot_loader.h"
#include "simulator/decoder.h"
#include "simulator/update_mode.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace karvo::sim
{

// Since an arbitrary start.
using Time = std::chrono::microseconds;

enum class Pace {
    line, // the line's baud in both directions, 10 bits a byte
    none  // everything at once
};

enum class Fault {
    none,
    silence,               // answers nothing at all
    unknownIdentification, // answers "%" with "99"
    wrongCheckByte,        // the block's check byte is off by one
    shortBlock,            // the block ends 100 bytes early
    lateBlock,             // the block starts only after 12 s
    tornBlock,             // the block comes in pieces of 128 bytes with pauses of 300 ms
    refusedCommand,        // answers 21 (NAK) where 6 is due
    refusedFrame,          // acknowledges a command and answers 21 (NAK) to the frame that follows it, and to
                           // each record of an update
    silentLoader,          // the boot loader answers nothing from the first page on
    strictLoader,          // the boot loader answers all but what writes flash with a check-sum error
    terseLoader,           // the boot loader answers nothing but what writes flash
    changedByte,           // one byte of the fourth page is changed on its way: the loader skips that page
    silentUpdate,          // the interface answers nothing from the first record on
    lateReply,             // of a transfer of firmware, from its first page or record on: replies after 6 s
    garbledReply,          // the same, with every bit turned round
    excessReply,           // the same, with 100 further bytes behind each
    hangUp // the line goes away in the middle of the block, or behind the first page or record of
           // a transfer of firmware, once: reconnect() ends the fault
};

// The name used on the command line, such as "wrong-check-byte"; nothing for an unknown name.
std::optional<Fault> faultByName(std::string_view name);
std::vector<std::string_view> faultNames();

// A whole command or reply, as it is told to whoever watches the line. The word is short and stable, such as
// "identify" or "block"; what belongs to no command is "unknown", what broke off in between "cut-short", and
// what came while a fault keeps the device deaf "unheard".
struct Passed {
    bool isReply;
    std::string_view word;
    std::span<const std::uint8_t> bytes; // as they were sent; valid during the call only
};

class Simulator
{
public:
    Simulator(Decoder decoder, Pace pace, Fault fault);

    // Bytes sent by the program, the first of them starting on the line at `now`, or as soon as those before
    // it have passed. On a line that hung up they are lost. After 2 s of silence a frame or a message that
    // began to come is no longer awaited, so that a program that was ended in between does not leave the
    // device deaf.
    void receive(std::span<const std::uint8_t> bytes, Time now);

    // Bytes that have become readable by `now`, in order.
    std::vector<std::uint8_t> take(Time now);

    // When the next byte becomes readable or the hang-up happens; nothing while nothing is on its way. A
    // hang-up that has happened stays the next event until reconnect().
    std::optional<Time> nextEvent() const;

    bool hungUp(Time now) const;

    // The adapter is plugged in again, or the port was closed and opened: what was on its way is lost.
    void reconnect();

    // How the port was opened: at 115200 the decoder's boot loader is what listens, at any other rate the
    // interface.
    void setBaud(int baud);
    int baud() const { return baud_; }

    // Is told of each command when it is complete, and of each reply when it begins its way.
    void setWatcher(std::function<void(const Passed&)> watcher) { watcher_ = std::move(watcher); }

    const BootLoader& bootLoader() const { return bootLoader_; }

    // Of the update under way or the last one.
    const UpdateMode& update() const { return update_; }

    // The live values that were taken, in their order.
    struct LiveValue {
        int channel;
        int value;
    };
    const std::vector<LiveValue>& liveValues() const { return liveValues_; }

    // A script may change the fault between two exchanges.
    void setFault(Fault fault);

    const Decoder& decoder() const { return decoder_; }

private:
    enum class Awaited { command, writeFrame, liveFrame, update };

    struct Outgoing {
        Time due;
        std::uint8_t byte;
    };

    void forgetStaleFrame(Time now);
    void tellCommand(std::string_view word, std::size_t count);
    void tellCommand(std::string_view word) { tellCommand(word, received_.size()); }
    void cutShort();
    void receiveByte(std::uint8_t byte, Time arrival);
    void receiveCommandByte(std::uint8_t byte, Time arrival);
    void receiveBootLoaderByte(std::uint8_t byte, Time arrival);
    void receiveUpdateByte(std::uint8_t byte, Time arrival);
    void startUpdate(Time arrival);
    void sendTransferReply(std::vector<std::uint8_t> reply, Time arrival);
    void receiveFrameByte(std::uint8_t byte, Time arrival);
    void acknowledgeCommand(std::string_view word, Awaited next, Time arrival);
    void sendAcknowledge(bool refused, Time arrival);
    void answerFrame(Time arrival);
    void sendIdentification(Time arrival);
    std::vector<std::uint8_t> block() const;
    void sendBlock(Time arrival);
    void send(std::string_view word, std::span<const std::uint8_t> bytes, Time start);
    Time lineTime(std::size_t bytes) const;

    Decoder decoder_;
    Pace pace_;
    Fault fault_;
    BootLoader bootLoader_;
    UpdateMode update_;
    int baud_ = 4800;
    Awaited awaited_ = Awaited::command;
    std::vector<std::uint8_t> received_; // of the command, frame or message under way
    std::vector<LiveValue> liveValues_;
    std::deque<Outgoing> outgoing_;
    Time inwardFree_{};  // when the line to the device has passed all that was sent
    Time outwardFree_{}; // when the line from the device has passed all that was answered
    std::optional<Time> hangUpAt_;
    std::function<void(const Passed&)> watcher_;
};

} // namespace karvo::sim
