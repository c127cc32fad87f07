// What a write is about to do, and what it has done, as lines or as JSON.
#pragma once

#include "cli/output.h"
#include "workbench/workbench.h"
#include "workbench/write_preview.h"
#include "workbench/write_report.h"

namespace karvo
{

void printPreview(Output& output, const WritePreview& preview, const ProgramState& state);

// A line for each CV; where a fault ended it before the first CV, with that as the reason.
void printOutcomes(Output& output, const WriteReport& report, const LanguageTables& texts);

} // namespace karvo
