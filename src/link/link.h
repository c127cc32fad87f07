// The decoder link's own data, and what its operations work with.
#pragma once

#include "language/language_tables.h"
#include "link/type_code.h"
#include "program/prompts.h"
#include "program/serial_port.h"
#include "program/view.h"
#include "program/wait.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>

namespace karvo
{

inline constexpr std::chrono::milliseconds usualTimeOut{5000};
inline constexpr std::chrono::milliseconds longBlockTimeOut{10000};

struct LinkState {
    int portNumber = 1; // 1 to 31
    Bytes outgoingFrame;
    Bytes lastReply;
    bool timeOut = false;         // the last wait timed out or hung up, and nobody has reported it yet
    std::size_t awaitedBytes = 0; // how many the last exchange waited for
    std::size_t arrivedBytes = 0; // how many came, those included that a hang-up took away again
    std::chrono::milliseconds timeOutInterval = usualTimeOut;
    int run = 0;                                      // the run of exchanges without a fault that now lasts
    std::optional<std::chrono::microseconds> lastUse; // its last exchange; see lineRunLasts()
    TypeCode typeCode = TypeCode::kv04;               // of the decoder that was identified last
    Text identification;            // the two characters of the last identification that was recognised
    bool identified = false;        // a decoder has been identified since the program started
    bool interfaceAnswered = false; // the programming interface has answered an exchange
    bool otherSettings = false;     // the port has been opened with other settings than the interface's
    bool noticeAfterWrite = false;  // the person wants a box after each write that succeeded
    bool seriesUnderWay = false;    // a series of CVs is being written: no such boxes
    bool readUnderWay = false;      // a block is being read: it ends when the person stops it
    bool replyCutOff = false;       // a read was stopped; the rest of its reply may still be on its way
    bool manyUnderWay = false;      // a dialog or an operation writes many and tells the outcome itself: none
};

// Index n holds CV n. A read fills 1 to 512 or 1 to 1024.
using CvImage = std::array<std::uint8_t, 1112>;

// Single values that a read of a receiver keeps.
struct ReceiverValues {
    int firmwareVersion = 0;
    int firmwareLevel = 3; // for all other decoders it stays 3
    int cv478 = 0;
    int cv74 = 0;
    int cv77 = 0;
    int cv78 = 0;
    int cv80 = 0;
};

// What every operation on the line is handed.
struct Link {
    LinkState& state;
    SerialPort& port;
    Wait& wait;
    Prompts& prompts;
    View& view;
    const LanguageTables& texts;
    bool unsavedWorkKept = false; // what is unsaved is offered at the next start, however the program ends
    const bool* stopRequested = nullptr; // true: the person wants what is under way to end
};

} // namespace karvo
