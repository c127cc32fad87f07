// The first line of a CV list file: which model the list is of, and its firmware version.
#pragma once

#include "cvdata/decoder_profile.h"

#include <optional>

namespace karvo
{

struct ListModel {
    DecoderProfile profile; // model, generation and firmware version; the processor is the model's usual one
    bool isPreset = false;  // the values of a bus or a fire engine
    bool namesGeneration =
        true; // false: the words behind the model are not known, and the first form stands in
};

// "Standard KV07 F5*5" is a KV07 of generation F5, firmware 5. Words that no model has are passed over, so
// that a header may be added to. Nothing for a header that names no model.
std::optional<ListModel> modelOfHeader(TextView header);

// The number behind the last "*"; nothing when there is none from 0 to 255.
std::optional<int> versionInHeader(TextView header);

// The header with "*" and the version at its end, where it does not already end so.
Text headerWithVersion(TextView header, int version);

} // namespace karvo
