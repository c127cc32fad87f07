// What has been loaded comes to the bench, and its list before the person.
#pragma once

#include "cvdata/description_library.h"
#include "workbench/workbench.h"

namespace karvo
{

// What is wrong with the files that a set was made of.
struct SetFaults {
    std::vector<LibraryFault> ofFiles;   // in the order in which they were opened
    std::optional<LibraryFault> leftOut; // of the description itself; told when the list can be seen
};

// The end of every way on which a set is loaded: it is the set on the bench, its values are those that later
// ones are changes of, its faults are told, and the view shows it.
void putOnBench(Workbench& bench, CvSet set, const SetFaults& faults);

// The same for the set that is on the bench already, described anew: its changes stay changes.
void showAnew(Workbench& bench, const SetFaults& faults);

// Makes the list anew from the table, keeps what is unsaved in it safe and tells the view.
void fillList(Workbench& bench);

// Empties the list, the table and the fields; the decoder that was identified stays known.
void clearDisplay(Workbench& bench);

} // namespace karvo
