// Lists that the menu shows without a decoder.
#pragma once

#include "workbench/workbench.h"

#include <string_view>

namespace karvo
{

// When no decoder has been identified since the program started, asks whether to go on without one. True to
// go on.
bool confirmOfflineList(Workbench& bench);

// For the lists of which there are four, one for each bus or fire-engine automatic, asks which one to show;
// the one that was shown last is proposed. Then as showOfflineList(). False when cancelled too.
bool showChosenOfflineList(Workbench& bench, std::string_view menuItem);

// Shows the list of a menu item such as "mnu_kv07". False, after a message, when its description can not be
// read; false without one for an unknown item and for a stored variant beyond the four.
bool showOfflineList(Workbench& bench, std::string_view menuItem);

// The menu item that shows the values a decoder of the kind on the bench comes with.
inline constexpr std::string_view standardListItem = "mnu_standart";

// Shows the standard list of the decoder on the bench: its description's own values in place of what was
// read. False without a list, while the line is busy, or, after a message, when its description can not be
// read.
bool showStandardList(Workbench& bench);

} // namespace karvo
