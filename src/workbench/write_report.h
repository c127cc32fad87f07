// What each CV of a write of many has done, for the list at its end.
#pragma once

#include "language/language_tables.h"
#include "link/write.h"
#include "workbench/write_plan.h"

#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace karvo
{

struct WriteOutcome {
    int cv;
    int value;
    WriteSkip skip = WriteSkip::none;
    std::optional<WriteEnd> end = {}; // nothing: left out, or its turn did not come
    std::optional<int> held = {};     // what the vehicle held before, as far as that is known
    Text name = {};
};

enum class WriteManyEnd {
    finished,       // every CV has had its turn
    stoppedByUser,  // between two CVs
    stoppedByFault, // the line or the decoder gave up; reported
    nothingToWrite, // the list is empty, or the decoder holds all of its values already
    busy,           // another operation has the line
    cancelled,      // in the preview; nothing was written
    declined,       // a question before the write was answered No; nothing was written
    otherModel,     // the list belongs to another model; reported, nothing was written
    backupFailed,   // what the decoder held could not be kept; reported, nothing was written
    noReply,        // to the identification or the block read; reported, nothing was written
    unknownDecoder, // reported, nothing was written
    wrongCheckByte, // of the block read; reported, nothing was written
    ended           // the program is being closed
};

struct WriteReport {
    WriteManyEnd end = WriteManyEnd::finished;
    std::vector<WriteOutcome> outcomes; // in the order of writing
    Text addressNotice = {};            // to which address the vehicle answers now, where that may surprise
    std::filesystem::path backup = {};  // what the vehicle held before; empty where that was not kept

    std::size_t countOf(WriteEnd wanted) const;

    // All but the CVs that are never written this way: CV7, CV8, CV59 and what the model does not use.
    std::size_t countOfWanted() const;

    // Whether nothing was left to be desired: finished, and no CV was refused, neither by the decoder nor for
    // its limits nor because the model lacks CV11 to CV14. CVs that are never written this way, and CV161
    // without its acknowledge, do not count.
    bool isClean() const;

    // Whether each CV has had its turn, or the write was stopped in between: then there is something to show.
    bool hasRun() const;

    // What is still to be written after a write that ended before its last CV: what has not had its turn, and
    // what the line has kept from the decoder. A value that the decoder refused would be refused again; but
    // the parts of an address are of no use without each other.
    std::vector<int> rest() const;
};

// A value that the vehicle held; "---" where that is not known.
Text heldText(std::optional<int> held);

// The words for why a CV is left out.
Caption captionOfSkip(WriteSkip skip);

// "2 x left out, read only": a line for each of these reasons, in their order. None of them is `none`.
std::vector<Text> reasonsOf(std::span<const WriteSkip> skips, const LanguageTables& texts);

// The words for one CV's outcome, such as "written"; complete behind "CV48 = 12  ".
Text outcomeText(const WriteOutcome& outcome, const LanguageTables& texts);

// "CV48 = 12  written": a line of the list.
Text outcomeLine(const WriteOutcome& outcome, const LanguageTables& texts);

// What stands above the single CVs, line by line: how many were written and left out, why it ended early, the
// vehicle's address, and where what it held before was kept.
std::vector<Text> summaryOf(const WriteReport& report, const LanguageTables& texts);

// The whole report, to be pasted elsewhere: the summary, and a line for each CV with tabs between its parts.
Text reportText(const WriteReport& report, const LanguageTables& texts);

} // namespace karvo
