// What stands between the wish to write and the first byte of it. Every write goes through here, single or
// many, from the window, an editor or the command line:
//  1. askBeforeSending(): what is asked while nothing has been sent.
//  2. WriteGuard::meetVehicle(): who is on the line, what he holds, and whether the list was made for him.
//  3. WriteGuard::keepBlock(): what he holds is kept as a file.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_backup.h"
#include "workbench/write_report.h"

#include <optional>
#include <vector>

namespace karvo
{

// Asks and tells what concerns the values themselves. A CV that is not to be written gets its end.
void askBeforeSending(Workbench& bench, std::vector<WriteOutcome>& outcomes);

// Whether the CV still has its turn before it.
bool isDue(const WriteOutcome& outcome);
bool anyDue(const std::vector<WriteOutcome>& outcomes);

// What the block of the vehicle is read for.
enum class BlockUse {
    plan,  // it decides what is written: it is always read, and without it nothing is
    backup // it is not read while it is known and kept; the person may do without it where it can not be had
};

// For one write. The line has to be in use by the caller.
class WriteGuard
{
public:
    WriteGuard(Workbench& bench, KeepBackup keepBackup) : bench_(bench), keepBackup_(std::move(keepBackup)) {}

    // Identifies the vehicle, refuses one of another model than the list's, reads its block, and asks when
    // list and vehicle are of different builds. Nothing when the write may go on; else the reason has been
    // shown.
    std::optional<WriteManyEnd> meetVehicle(BlockUse use);
    bool hasMetVehicle() const { return !decoder_.empty(); }

    // The block that was read; nothing when that was left out.
    const std::optional<DecoderBlock>& block() const { return block_; }

    // Keeps the block that was read, unless it is kept. Nothing when the write may go on.
    std::optional<WriteManyEnd> keepBlock();

    // The identification that every write has to find.
    const Text& decoder() const { return decoder_; }

    // The first write has found another decoder than was expected without a read: the vehicle was changed
    // meanwhile. True once; then all begins anew.
    bool mustMeetAnew();

private:
    bool canLeaveOutRead() const;
    std::optional<WriteManyEnd> identify();
    std::optional<WriteManyEnd> readBlock(BlockUse use);
    std::optional<WriteManyEnd> writeWithoutBackup();
    std::optional<WriteManyEnd> confirmBuild();

    Workbench& bench_;
    KeepBackup keepBackup_;
    Text decoder_;
    std::optional<DecoderBlock> block_;
    bool readLeftOut_ = false;
    bool hasMetAnew_ = false;
};

} // namespace karvo
