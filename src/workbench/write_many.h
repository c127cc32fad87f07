// Writing many CVs of the list on the bench, one after the other.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_backup.h"
#include "workbench/write_report.h"

#include <vector>

namespace karvo
{

// How a write of many goes:
//  - The decoder on the line, identified first when none has been in this run, has to be of the list's model.
//  - The block is read; what the vehicle holds is kept; what differs from it is marked in the list.
//  - Speed steps outside their limits are asked about: the table is written whole or not at all.
//  - Each CV is written once. ProgramState::stopRequested ends it before the next one. A CV whose value is
//    refused is passed over, and three refusals in a row end the write, as does anything that speaks for the
//    line or the decoder itself: then the rest would fail likewise, each with its box.
//  - CV29 and CV21 are left out when an address before them was not confirmed, and so are a receiver's CV248
//  and
//    CV250: they would put an address to use that nobody has chosen.
//  - A CV that was written is no longer marked. The report says what each CV did.
// The boxes that announce the success of single writes do not come.

// The CVs whose value in the list differs from the decoder's. Where the model lacks CV11 to CV14 and their
// values differ, a message says so, and the others are written.
WriteReport writeChanged(Workbench& bench, const KeepBackup& keepBackup);

// All CVs of the list, but for those that the decoder alone decides.
WriteReport writeAll(Workbench& bench, const KeepBackup& keepBackup);

// These values, in the plan's order and without a block read: what an editor has made. They stand in the list
// first; what was not written stays marked there.
WriteReport writeValues(Workbench& bench, const WritePlan& plan, const KeepBackup& keepBackup);

// Just these, right after a read of the same decoder: without a further block.
WriteReport writeChosen(Workbench& bench, const std::vector<int>& cvs, const KeepBackup& keepBackup);

} // namespace karvo
