// To which address a vehicle answers after a write that did not come to its end.
#pragma once

#include "cvdata/decoder_profile.h"
#include "workbench/write_report.h"

namespace karvo
{

// What the vehicle holds as far as it is known: its block, with all that was confirmed since.
struct HeldBlock {
    const CvImage& image;
    const DecoderProfile& profile;
};

// A sentence, where CVs of an address have had their turn and not everything was written; else empty. A value
// that was sent and not acknowledged counts both ways. Without a block nobody knows.
Text addressNotice(const std::vector<WriteOutcome>& outcomes, const HeldBlock* held,
                   const LanguageTables& texts);

} // namespace karvo
