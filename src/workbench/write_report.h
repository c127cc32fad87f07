// What each CV of a write of many has done, for the list at its end.
#pragma once

#include "language/language_tables.h"
#include "link/write.h"
#include "workbench/write_plan.h"

#include <optional>
#include <vector>

namespace karvo
{

struct WriteOutcome {
    int cv;
    int value;
    WriteSkip skip = WriteSkip::none;
    std::optional<WriteEnd> end = {}; // nothing: left out, or its turn did not come
};

enum class WriteManyEnd {
    finished,       // every CV has had its turn
    stoppedByUser,  // between two CVs
    stoppedByFault, // the line or the decoder gave up; reported
    nothingToWrite, // the list is empty, or the decoder holds all of its values already
    busy,           // another operation has the line
    otherModel,     // the list belongs to another model; reported, nothing was written
    declined,       // a question about the vehicle was answered No; nothing was written
    backupFailed,   // what the decoder held could not be kept; reported, nothing was written
    noReply,        // to the identification or the block read; reported, nothing was written
    unknownDecoder, // reported, nothing was written
    wrongCheckByte, // of the block read; reported, nothing was written
    ended           // the program is being closed
};

struct WriteReport {
    WriteManyEnd end = WriteManyEnd::finished;
    std::vector<WriteOutcome> outcomes; // in the order of writing

    std::size_t countOf(WriteEnd wanted) const;

    // All but the CVs that are never written this way: CV7, CV8, CV59 and what the model does not use.
    std::size_t countOfWanted() const;

    // Whether nothing was left to be desired: finished, and no CV was refused, neither by the decoder nor for
    // its limits nor because the model lacks CV11 to CV14. CVs that are never written this way, and CV161
    // without its acknowledge, do not count.
    bool isClean() const;
};

// The words for one CV's outcome, such as "written"; complete behind "CV48 = 12  ".
Text outcomeText(const WriteOutcome& outcome, const LanguageTables& texts);

// "CV48 = 12  written": a line of the list.
Text outcomeLine(const WriteOutcome& outcome, const LanguageTables& texts);

} // namespace karvo
