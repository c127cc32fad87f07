// Keeping what a vehicle held before the first write to it, so that every write can be undone.
#pragma once

#include "workbench/workbench.h"

#include <functional>
#include <optional>

namespace karvo
{

// Keeps a set as a file; returns what went wrong, in words, or nothing.
using KeepBackup = std::function<std::optional<Text>(const CvSet&)>;

// Hands the block that was read last to `keep`, described in the words of its decoder, unless it is what was
// kept before together with what has been written since: so a vehicle's first write keeps its block, the
// next ones do not, and another vehicle's does again. Without a block that was read there is nothing to keep.
// False, after a message, when it can not be kept: then nothing may be written.
bool keepBlockBeforeWrite(Workbench& bench, const KeepBackup& keep);

// Notes what a write has changed in the block that was kept.
void noteWrite(ProgramState& state, int cv, int value);

} // namespace karvo
