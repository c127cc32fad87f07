// Changing the value of a CV on the bench; the decoder learns of it when it is written.
#pragma once

#include "cvdata/cv_use.h"
#include "workbench/workbench.h"

namespace karvo
{

enum class ChangeEnd {
    changed,       // the list shows the new value
    outsideLimits, // reported; nothing has changed
    notInList,     // reported; nothing has changed
    busy           // an operation has the line; nothing has changed
};

// Sets the value as typed, or as a number, and makes the list anew. The current CV stays the current one.
ChangeEnd changeValue(Workbench& bench, int cv, TextView typed);
ChangeEnd changeValue(Workbench& bench, int cv, int value);

// The same for a value from 0 to 255 that may be outside its limits: who writes it asks about them then.
ChangeEnd takeValueForWrite(Workbench& bench, int cv, int value);

// The value as it was read, opened or written, for one CV or for all. True when a value was another; false
// too while an operation has the line.
bool takeBackValue(Workbench& bench, int cv);
bool takeBackAllValues(Workbench& bench);

} // namespace karvo
