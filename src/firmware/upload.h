// The upload of a firmware image to the boot loader (docs/protocol.md, "The boot loader").
#pragma once

#include "firmware/hex_image.h"
#include "firmware/reply_judge.h"
#include "program/work_observer.h"
#include "workbench/workbench.h"

#include <vector>

namespace karvo
{

enum class UploadPhase { signOn, parameters, settings, fuses, erase, pages };

struct PlannedMessage {
    UploadPhase phase;
    Bytes bytes;
    std::size_t expectedReply;    // bytes that end the wait
    bool countsForVerdict = true; // else a reply is a remark in the log, no more
};

// One message of the upload and what came back.
struct UploadStep {
    PlannedMessage message;
    Bytes reply;
    ReplyVerdict verdict;

    bool isPage() const { return message.phase == UploadPhase::pages; }
    bool isAccepted() const { return verdict == ReplyVerdict::accepted; }
};

struct UploadProgress {
    UploadPhase phase;
    std::size_t page;  // being written, from 1; 0 before the first
    std::size_t pages; // in all
};

// What is known of the decoder's old firmware.
enum class EraseState { untouched, mayBeErased, erased };

// Whoever watches an upload; asked before each message but the first whether it is to end.
class UploadObserver : public WorkObserver
{
public:
    // Before each message.
    virtual void showUpload(const UploadProgress& progress) = 0;

    // After each message, with what came back.
    virtual void showStep(const UploadStep& step) = 0;

    // Nothing has come in reply to the first three messages, or to three in a row that count. The upload goes
    // on.
    virtual void showSilence(EraseState erase) = 0;
};

enum class UploadEnd {
    sent,        // every message; what the replies say of them stands in the report
    stopped,     // by the person
    lineLost,    // the port went away; reported
    portRefused, // reported; the program ends
    lineBusy,    // another operation has the line
    ended        // the program is being closed
};

struct UploadReport {
    UploadEnd end;
    std::vector<UploadStep> steps; // what was sent, in order
    std::size_t pages = 0;         // of the image

    std::size_t pagesAccepted() const;
    bool anyReply() const; // a single byte is enough
    EraseState erase() const;

    // Everything was sent, and every reply that counts says that it was taken.
    bool isAccepted() const;
};

// Every message of an upload, in order; sequence numbers count from 1.
std::vector<PlannedMessage> uploadPlan(const HexImage& image);

// Asks for the HEX file to send; when none was chosen that has been told.
std::optional<std::filesystem::path> chooseImage(Prompts& prompts, const LanguageTables& texts,
                                                 const std::filesystem::path& folder);

// Reads and checks a HEX file; what is wrong with it has been shown then.
std::optional<HexImage> readHexFile(Workbench& bench, const std::filesystem::path& path);

// Sends the whole plan at 115200 baud, each message once, and goes on whatever the reply was. Afterwards the
// port stays open; the next exchange with the interface opens it anew.
UploadReport uploadImage(Workbench& bench, const HexImage& image, UploadObserver& observer);

} // namespace karvo
