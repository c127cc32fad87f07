// When the list on the bench is among the files that were changed in one go.
#pragma once

#include "cvdata/batch_change.h"
#include "workbench/workbench.h"

#include <span>

namespace karvo
{

// Takes the values that were saved into the file of the set on the bench, so that the next save does not take
// them away again. What else is unsaved in the set stays as it is. Does nothing while the line is busy.
void takeBatchChanges(Workbench& bench, std::span<const BatchFile> batch);

} // namespace karvo
