// The upload of a firmware image to the boot loader (docs/protocol.md, "The boot loader").
#pragma once

#include "firmware/hex_image.h"
#include "workbench/workbench.h"

#include <vector>

namespace karvo
{

enum class UploadPhase { signOn, parameters, settings, fuses, erase, pages };

// One message of the upload and what came back.
struct UploadStep {
    UploadPhase phase;
    Bytes sent;
    std::size_t expected = 0; // bytes
    Bytes reply;

    // The loader's words are not examined; only too few bytes are a miss.
    bool isMissing() const { return reply.size() < expected; }
};

struct UploadProgress {
    UploadPhase phase;
    std::size_t page;  // being written, from 1; 0 before the first
    std::size_t pages; // in all
};

// Whoever watches an upload.
class UploadObserver
{
public:
    virtual ~UploadObserver() = default;

    // Before each message.
    virtual void showUpload(const UploadProgress& progress) = 0;

    // After each message, with what came back.
    virtual void showStep(const UploadStep& step) = 0;

    // Asked before each message but the first: true ends the upload.
    virtual bool stopRequested() = 0;
};

enum class UploadEnd {
    sent,        // every message; replies may be missing
    stopped,     // by the person
    lineLost,    // the port went away; reported
    portRefused, // reported; the program ends
    lineBusy,    // another operation has the line
    ended        // the program is being closed
};

struct UploadReport {
    UploadEnd end;
    std::vector<UploadStep> steps; // what was sent, in order
    std::size_t pagesSent() const;
    std::size_t missingReplies() const;
};

struct PlannedMessage {
    UploadPhase phase;
    Bytes bytes;
    std::size_t expectedReply; // bytes
};

// Every message of an upload, in order; sequence numbers count from 1.
std::vector<PlannedMessage> uploadPlan(const HexImage& image);

// Asks for the HEX file to send; when none was chosen that has been told.
std::optional<std::filesystem::path> chooseImage(Workbench& bench, const std::filesystem::path& folder);

// Reads and checks a HEX file; what is wrong with it has been shown then.
std::optional<HexImage> readHexFile(Workbench& bench, const std::filesystem::path& path);

// Sends the whole plan at 115200 baud, each message once, and goes on whatever the reply was. Afterwards the
// port stays open; the next exchange with the interface opens it anew.
UploadReport uploadImage(Workbench& bench, const HexImage& image, UploadObserver& observer);

// Two lines, without a line end behind them: the bytes of the message, and those of the reply.
Text uploadLog(const LanguageTables& texts, const UploadStep& step);

} // namespace karvo
