// One command and its reply (docs/protocol.md, "The line").
#pragma once

#include "link/link.h"

namespace karvo
{

// How many bytes end the wait for a reply.
struct ReplyLength {
    enum class Rule { atLeast, identification, exactly };
    Rule rule = Rule::atLeast;
    std::size_t count = 1; // for `exactly`: more bytes than these do not end the wait either

    static ReplyLength atLeastOne() { return {}; }
    static ReplyLength atLeast(std::size_t count) { return {Rule::atLeast, count}; }
    // Two bytes, or one with nothing behind it for 50 ms.
    static ReplyLength identification() { return {Rule::identification, 2}; }
    static ReplyLength exactly(std::size_t count) { return {Rule::exactly, count}; }
};

enum class ExchangeEnd {
    replied,  // the reply stands in LinkState::lastReply
    timedOut, // nothing, or not enough, within the time-out; or the line hung up
    ended     // the program is being closed, or the person has stopped a read: the port is closed then
};

// Whether the main window shows the hourglass from here on; whoever asked for it takes it away.
enum class Pointer { unchanged, hourglass };

// Opens the port with the interface's settings, unless it is open with them. Nothing on success.
std::optional<PortError> tryToOpen(LinkState& state, SerialPort& port);

// Opens the port when it is closed, and lets the rest of a reply pass that a stop has cut off. When it can
// not be opened it shows the system's words and what to do, ends the program and returns false.
bool EnsurePortOpen(Link& link);

// The same for a device that wants other settings, on a freshly opened port: settings take effect at an
// opening only. The next EnsurePortOpen() opens anew with the interface's.
bool openWith(Link& link, const LineSettings& settings);

// Sends the command once and waits for its reply, for at most LinkState::timeOutInterval. Reports nothing to
// the person. While an exact count is awaited it tells the view how many bytes are there.
ExchangeEnd Exchange(Link& link, const Bytes& command, ReplyLength replyLength,
                     Pointer pointer = Pointer::unchanged);

enum class ReplyEnd { replied, timedOut, lineLost, ended };

// The wait of those who send in another way, and do not examine the reply: until at least `count` bytes are
// there, for at most LinkState::timeOutInterval. All that has come stands in LinkState::lastReply then,
// whatever the end.
ReplyEnd awaitReply(Link& link, std::size_t count);

// A run of the line: exchanges without a fault on a port that stays open, none of them more than a minute
// behind the one before, and always the same decoder that answers. While it lasts, the vehicle on the line is
// taken for the one that was met in it. LinkState::run is its number.
inline constexpr std::chrono::seconds longestPauseOfRun{60};

// Whether the run of that number still lasts.
bool lineRunLasts(const Link& link, int run);

// Something went wrong, or something was done to the decoder: the next exchange begins another run.
void breakLineRun(LinkState& state);

// True when the reply's first byte is 6.
bool IsAck(const Bytes& reply);

} // namespace karvo
