// Writing one CV, and a series of them (docs/protocol.md, "The line").
#pragma once

#include "link/link.h"

#include <array>
#include <optional>

namespace karvo
{

enum class WriteEnd {
    written,        // acknowledged
    unconfirmed,    // CV161 was sent and not acknowledged: its decoder restarts; not reported
    refusedByUser,  // the question before a reset was answered No; nothing was sent
    guarded,        // the firmware does not let this CV be written; reported, nothing was sent
    noReply,        // reported; nothing was written
    unacknowledged, // reported; the frame was sent, and nobody knows whether its value is stored
    unknownDecoder, // reported; nothing was written
    otherDecoder,   // not WriteCommand::onlyFor: nothing was written, and the caller reports it
    commandRefused, // reported; nothing was written
    frameRefused,   // reported; the decoder did not take the value
    ended           // the program is being closed
};

struct WriteCommand {
    int cv;                // 1 to 256
    int value;             // 0 to 255
    int firmwareLevel = 3; // ReceiverValues::firmwareLevel
    Text onlyFor = {};     // the identification that the decoder has to give; empty: any that can be written
    bool guarded = false;  // guardWrite() has let it through already
};

inline constexpr int resetCv = 59; // whatever is written to it sets the decoder back

// Of receivers: writing one of them puts the address of a servo to use, and it reads 0 again.
inline constexpr int firstServoTakeOverCv = 248;  // CV11 and CV12
inline constexpr int secondServoTakeOverCv = 250; // CV13 and CV14
inline constexpr int takeOverValue = 1;           // any value does
constexpr bool isTakeOverCv(int cv)
{
    return cv == firstServoTakeOverCv || cv == secondServoTakeOverCv;
}
// The one that puts this part of a servo's address to use; 0 for any other CV.
constexpr int takeOverCvOf(int cv)
{
    if (cv == 11 || cv == 12)
        return firstServoTakeOverCv;
    return cv == 13 || cv == 14 ? secondServoTakeOverCv : 0;
}

// What is said of a CV that was written: "CV 48  ...", "CV11 + CV12  ..." of the one that takes both over.
Text writtenNotice(int cv, const LanguageTables& texts);

// What stands before the first byte of a write: the question before a reset, and CV99 of old firmware.
// Nothing when the write may go on.
std::optional<WriteEnd> guardWrite(Link& link, const WriteCommand& command);

// Sends "%". Nothing when a decoder that can be written has answered; else what went wrong has been shown.
std::optional<WriteEnd> identifyForWrite(Link& link);

// Guards the write unless that has been done, identifies the decoder, announces the value and sends it, once.
// The port stays open.
WriteEnd writeCv(Link& link, const WriteCommand& command);

// The series of CV167 to CV171, which belong together: kind and numbers of a vehicle.
inline constexpr int firstSeriesCv = 167;
inline constexpr int lastSeriesCv = 171;
inline constexpr std::size_t seriesLength = lastSeriesCv - firstSeriesCv + 1;

// Writes the five values in order, with a pause after each and without a notice of success. A failure is
// shown, and the next CV follows. After the end of the program nothing more is sent; what was not sent is
// `ended`.
std::array<WriteEnd, seriesLength> writeSeries(Link& link, const std::array<int, seriesLength>& values,
                                               const Text& onlyFor);

} // namespace karvo
