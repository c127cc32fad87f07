// Keeping what a vehicle held before the first write to it, so that every write can be undone.
#pragma once

#include "workbench/workbench.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace karvo
{

struct KeptBackup {
    std::filesystem::path file;
    std::optional<Text> trouble = std::nullopt; // what went wrong, in words; nothing was kept then
};

// Keeps a set as a file of its own.
using KeepBackup = std::function<KeptBackup(const CvSet&)>;

// Hands the block that was read last to `keep`, described in the words of its decoder, unless it is what was
// kept before together with what has been written since: so a vehicle's first write keeps its block, the
// next ones do not, and another vehicle's does again. Without a block that was read there is nothing to keep.
// False, after a message, when it can not be kept: then nothing may be written.
bool keepBlockBeforeWrite(Workbench& bench, const KeepBackup& keep);

// Notes what a write has changed in the block that was kept.
void noteWrite(ProgramState& state, int cv, int value);

} // namespace karvo
