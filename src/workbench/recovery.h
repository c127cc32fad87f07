// What the user changed and has not saved survives a crash: it is kept in a file as it happens, and offered
// at the next start (docs/files.md, "Recovery").
#pragma once

#include "workbench/workbench.h"

namespace karvo
{

// Keeps the set on the bench while it has unsaved changes, else takes the kept one away: done whenever its
// list is made anew. Without a recovery file in the state nothing is done. A file that can not be written is
// told once in a run.
void keepRecovery(Workbench& bench);

// At the start, before any list is shown: when the last run left changes behind, asks whether to take them,
// naming the list file or the vehicle, when and how many. On Yes, which is proposed, they are the set on the
// bench, unsaved still. On No they are put aside under the recovery file's name with ".old" behind it. True
// when they were taken.
bool offerRecovery(Workbench& bench);

// For a box behind which the program ends: says that what is unsaved is kept, where it is.
Text withUnsavedWork(const ProgramState& state, Text text);

// At a clean end of the program, when the user has decided about the changes.
void dropRecovery(RecoveryState& recovery, Files& files);

} // namespace karvo
