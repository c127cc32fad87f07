// Values that the description does not provide for: a write from the list leaves them out, and who gives a
// value himself is asked.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_report.h"

namespace karvo
{

// The question before a write that names all that stands against one of these CVs; empty where nothing does.
Text questionBeyondLimits(const ProgramState& state, const std::vector<WriteOutcome>& outcomes);

// Whether these CVs may be written: where nothing stands against one that is to be written, or after a Yes to
// one question that names all that does.
bool mayWriteBeyondLimits(Prompts& prompts, const ProgramState& state,
                          const std::vector<WriteOutcome>& outcomes);

// The same of CVs that the list has and the firmware of the receiver on the line lacks.
bool mayWriteWhatItLacks(Prompts& prompts, const ProgramState& state,
                         const std::vector<WriteOutcome>& outcomes, const DecoderProfile& vehicle);

} // namespace karvo
