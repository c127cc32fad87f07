// Texts about the decoder on the bench and about the program's use.
#pragma once

#include "workbench/workbench.h"

namespace karvo
{

// Which files describe the current vehicle: "Decoder = KV07", the processor, and the full paths of the
// description file and the expert file, a line each. Empty without a list.
Text decoderInfoText(const ProgramState& state);

// What to do first.
Text helpText(const LanguageTables& texts);

// What the XT module is, and how it is read.
Text moduleHelpText(const LanguageTables& texts);

} // namespace karvo
