// Single lines of the main list, as the editors rewrite them before the list is made anew.
#pragma once

#include "cvdata/main_list.h"

namespace karvo
{

inline constexpr int noListRow = 999;

// The row, counted from 1, of the line that begins with a CV name such as "CV17"; `noListRow` without one.
// "CV1" is not the beginning of "CV17".
int listRowOf(const MainList& list, TextView name);

// The row, counted from 1, of the line of a speed step; `noListRow` where the list has no line for each.
int listRowOfStep(const MainList& list, int step);

// A value in the place of the line's old one: blanks at its end are cut off, then as many characters as the
// new value has digits. What stands behind the value of a speed step stays. The line that stands for the
// whole speed table is left as it is, as is a row beyond the list.
void cv_uebernehmen(MainList& list, int row, int value);

// The value that a preset has brought, behind what the line shows: " [12]".
void showLoadedValue(MainList& list, int cv, int value);

} // namespace karvo
