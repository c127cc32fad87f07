// Keeping what a vehicle held before the first write to it, so that every write can be undone.
#pragma once

#include "link/write.h"
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

// The block that has just been read, of the decoder that was identified last.
DecoderBlock blockJustRead(const LinkState& state, const CvImage& image);

// Whether the block is what was kept last together with what has been written since. Only CV1 to CV256, which
// can be written, count: behind them stand measurements that differ from read to read.
bool isKept(const ProgramState& state, const DecoderBlock& block);

// Hands the block to `keep`, described in the words of its decoder, unless it is kept: so a vehicle's first
// write keeps its block, the next ones do not, and another vehicle's does again. False, after a message, when
// it can not be kept: then nothing may be written.
bool keepBlock(Workbench& bench, const DecoderBlock& block, const KeepBackup& keep);

// A read has met this vehicle: the kept block is its own, or no longer that of the vehicle on the line.
void noteRead(ProgramState& state, const DecoderBlock& block);

// Notes what a write has changed in the block that was kept; after a reset, confirmed or not, nobody knows.
void noteWrite(ProgramState& state, int cv, int value, WriteEnd end);

// Whether this end of a write of CV59 leaves it possible that the decoder was set back.
bool mayHaveReset(WriteEnd end);

} // namespace karvo
