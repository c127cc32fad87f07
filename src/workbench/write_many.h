// Writing many CVs of the list on the bench, one after the other.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_backup.h"
#include "workbench/write_preview.h"
#include "workbench/write_report.h"

#include <vector>

namespace karvo
{

// How a write of many goes:
//  - Before the first byte of it stands the guard (write_guard.h). The writes of the whole list always read
//  the
//    block, and mark in the list what differs from it.
//  - Speed steps outside their limits are asked about: the table is written whole or not at all.
//  - Each CV is written once. ProgramState::stopRequested ends it before the next one. A CV whose value is
//    refused is passed over, and three refusals in a row end the write, as does anything that speaks for the
//    line or the decoder itself: then the rest would fail likewise, each with its box.
//  - CV29 and CV21 are left out when an address before them was not confirmed, and so are a receiver's CV248
//  and
//    CV250: they would put an address to use that nobody has chosen.
//  - A CV that was written is no longer marked. The report says what each CV did.
// The boxes that announce the success of single writes do not come.

// What is asked and shown of a write from the list, and which of its CVs it is about.
struct ListWrite {
    ConfirmPlan confirm = {}; // shows what will be written; nothing: it is written without that
    BeyondLimits beyond = BeyondLimits::leftOut;
    std::vector<int> only = {}; // the rest of an earlier write; empty: all
};

// The CVs whose value in the list differs from the decoder's. Where the model lacks CV11 to CV14 and their
// values differ, a message says so, and the others are written.
WriteReport writeChanged(Workbench& bench, const KeepBackup& keepBackup, const ListWrite& how = {});

// All CVs of the list, but for those that the decoder alone decides.
WriteReport writeAll(Workbench& bench, const KeepBackup& keepBackup, const ListWrite& how = {});

// These values, in the plan's order: what an editor has made. They stand in the list first; what was not
// written stays marked there, whatever the reason.
WriteReport writeValues(Workbench& bench, const WritePlan& plan, const KeepBackup& keepBackup);

// CV59 alone, for which no list is needed: a decoder whose memory can not be read can be set back.
WriteReport writeReset(Workbench& bench, int value, const KeepBackup& keepBackup);

// Just these, with their values in the list.
WriteReport writeChosen(Workbench& bench, const std::vector<int>& cvs, const KeepBackup& keepBackup);

} // namespace karvo
