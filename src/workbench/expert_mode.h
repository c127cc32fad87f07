// Expert mode: whether expert files are loaded.
#pragma once

#include "workbench/workbench.h"

namespace karvo
{

// Asks for the password of four characters. The right one switches expert mode on; another one shows a
// message and changes nothing. True when it is on now.
bool askForExpertMode(Workbench& bench);

// Stores it, and shows or takes away the expert lines of the set on the bench.
void setExpertMode(Workbench& bench, bool on);

} // namespace karvo
