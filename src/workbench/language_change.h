// The language in use, at the start and from the menu.
#pragma once

#include "workbench/workbench.h"

namespace karvo
{

// Loads the tables of a language. A missing file is shown and ends the program: false. A damaged one is told.
bool useLanguage(Workbench& bench, LanguageCode code);

// Stores the choice. The menu's marks follow from it.
void storeLanguage(Settings& settings, LanguageCode code);

// The list on the bench in the words of the language in use; the values and the current CV stay.
void describeAnew(Workbench& bench);

} // namespace karvo
