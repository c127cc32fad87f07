// Writing the current CV, and setting the decoder back.
#pragma once

#include "link/write.h"
#include "workbench/workbench.h"
#include "workbench/write_backup.h"

#include <optional>

namespace karvo
{

// Writes the current CV's value from the table. Nothing when there is none to write, when another operation
// has the line, or, after a message, when the guard before a write (write_guard.h) did not let it through.
std::optional<WriteEnd> writeSingle(Workbench& bench, const KeepBackup& keepBackup);

// Sets the decoder back to its factory values through CV59, which asks first, and then offers to read it.
// Returns as writeSingle does.
std::optional<WriteEnd> resetDecoder(Workbench& bench, const KeepBackup& keepBackup);

} // namespace karvo
