// The numbers by which the program addresses the texts of a language.
#pragma once

#include "language/caption_numbers.h"
#include "language/message_numbers.h"

namespace karvo
{

// Entry 76 of the menu-caption table is no menu item: the status text of a write's time-out.
inline constexpr unsigned writeTimeOutStatusEntry = 76;

} // namespace karvo
