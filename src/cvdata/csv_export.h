// The CVs of a set for other programs: number, value and text of each, separated by ";".
#pragma once

#include "cvdata/cv_table.h"

namespace karvo
{

// The two forms differ in their header line alone.
enum class CsvForm {
    plain,       // "CV-Nummer;CV-Wert;CV-Text"
    closedHeader // "CV-Nummer;CV-Wert;CV-Text;"
};

// One line for each CV that the table describes, in the order of their numbers.
Bytes csvExport(const CvTable& table, CsvForm form = CsvForm::plain);

// A text as a field: what would end the field or the line becomes "," or a blank.
Text csvField(TextView text);

} // namespace karvo
