// The list of a vehicle as plain text, to keep, to print or to hand on.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"
#include "program/clock.h"

namespace karvo
{

// A set whose values come from no vehicle and no list file begins with the line that says so.
std::vector<Text> textReport(const CvSet& set, const LanguageTables& texts);

// The lines of the list with their names in a column, and a line of its own for each of the CVs for which the
// list has one line together.
std::vector<Text> linesOfEveryCv(const CvSet& set, const LanguageTables& texts);

// What a vehicle is called: the name of its list file, else its model.
Text vehicleName(const CvSet& set);

// "KARVO Bus 2026-11-22.txt", without what no file name may hold.
Text reportFileName(const CvSet& set, const DateTime& now);

} // namespace karvo
