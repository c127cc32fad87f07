// What is typed beside the list is settled before anything else acts: a number and a value that can be taken
// are taken, everything else is refused with one message.
#pragma once

#include "cvdata/typed_entry.h"
#include "workbench/workbench.h"

namespace karvo
{

enum class EntryEnd {
    taken,
    numberRefused, // reported; nothing has changed
    valueRefused   // reported; a number has been taken
};

// A number makes its CV the current one; a value is set and marked. While an operation has the line no box
// may come up: what cannot be taken then is dropped.
EntryEnd takeEntry(Workbench& bench, const TypedEntry& entry);

} // namespace karvo
