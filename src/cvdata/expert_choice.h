// Which expert file belongs to a decoder.
#pragma once

#include "cvdata/decoder_profile.h"
#include "cvdata/description_choice.h"

#include <string>

namespace karvo
{

// The expert file of a decoder that has been read (docs/protocol.md, "Which decoder it is").
std::string expertFileName(const DecoderProfile& profile, LanguageCode language);

// The expert file of an offline list, whose profile tells its generation.
std::string offlineExpertFileName(const OfflineList& list, const DecoderProfile& profile,
                                  LanguageCode language);

} // namespace karvo
