// Function sheets and described settings, as lines or as JSON.
#pragma once

#include "cli/output.h"
#include "editors/describe_settings.h"
#include "editors/sheet_values.h"

namespace karvo
{

void printSheet(Output& output, const SheetView& view, const SheetValues& values, const ProgramState& state);
void printSettings(Output& output, const std::vector<DescribedGroup>& groups);

} // namespace karvo
