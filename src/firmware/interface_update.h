// The update of a decoder's firmware through the programming interface (docs/protocol.md, "Update through
// the interface").
#pragma once

#include "firmware/update_file.h"
#include "program/clock.h"
#include "program/work_observer.h"
#include "workbench/workbench.h"

#include <functional>

namespace karvo
{

// Whoever watches an update. Progress counts records and is told after each one; after the last of a block
// behind its pause. Whether to end is asked before the letters that call the interface's update mode, and
// between two blocks.
class UpdateObserver : public WorkObserver
{
public:
    // Before anything of an update is sent: what the file says of itself.
    virtual void showHeader(const Text& header) = 0;
    // From here to showEnd() records are being sent.
    virtual void showStart(const Text& text) = 0;
    virtual void showEnd() = 0;
};

enum class UpdateEnd {
    sent,         // and every reply acknowledged it
    notConfirmed, // sent whole, but some reply was no acknowledgement; reported, as all that follows
    notAnswered,  // the interface has not answered in this run
    noFile,       // none chosen, or it is damaged
    portRefused,  // the person goes on with the program, or ends it
    noReply,      // to "%" or to the letters
    wrongModel,   // no KV07, KV08 or receiver
    declined,     // the person does not want to send this file
    brokenOff,    // the interface fell silent; the program ends
    stopped,      // by the person
    lineBusy,     // another operation has the line
    ended         // the program is being closed
};

struct UpdateSetup {
    std::function<std::optional<std::filesystem::path>()> chooseFile; // nothing, or the proposed name: none
    std::function<void(const std::filesystem::path&)> showFile;       // in the window's caption
    const Clock& clock;                                               // for the date of the closing block
    UpdateObserver& observer;
};

// Asks whether the interface is there where it has not answered in this run, then for the file and the
// decoder's model, and about all that is unusual in the file. What is sent and in which order does not depend
// on a reply; that each one acknowledged decides what is told at the end. The list on the bench counts as
// stale then.
UpdateEnd updateThroughInterface(Workbench& bench, const UpdateSetup& setup);

// Asks for the update file to send.
std::optional<std::filesystem::path> chooseUpdate(Prompts& prompts, const LanguageTables& texts,
                                                  const std::filesystem::path& folder);

// Reads and checks an update file; what is wrong with it has been shown then.
std::optional<UpdateFile> readUpdateFile(Workbench& bench, const std::filesystem::path& path);

// "XF01", year - 2000, month, day, "CI".
Bytes closingBlock(const DateTime& date);

// A record's bytes added up, high byte first.
Bytes recordSum(const UpdateRecord& record);

inline constexpr std::size_t recordsOfABlock = 8;

// What a dialog for an update file proposes; a file of that name counts as none chosen.
inline constexpr TextView proposedUpdate = u"*.uhx";

} // namespace karvo
