// What older firmware of the receivers lacks. The description of a receiver tells of all that any of them
// knows, and marks the CVs that came with a later firmware.
#pragma once

#include "cvdata/decoder_profile.h"
#include "cvdata/description_file.h"
#include "program/text.h"

#include <optional>

namespace karvo
{

// Oldest first. `earlier` knows what that of September 2015 knows; the newer board of February 2016 tells
// itself by a sub-level above 0.
enum class ReceiverRelease { earlier, september2015, february2016, february2016NewBoard, february2022 };

// Nothing for what is no receiver, and where the date of its firmware is not known (an offline list, a list
// file).
std::optional<ReceiverRelease> releaseOf(const DecoderProfile& profile);

// Rows that the receiver's firmware lacks become like the unused ones of the description. Where its date is
// not known all of them stay.
void leaveOutLaterCvs(Description& description, const DecoderProfile& profile);

// Whether the receiver's firmware lacks the CV; false where its date is not known.
bool lacksCv(const DecoderProfile& profile, const CvTable& table, int cv);

// Adds to the advice on each CV that not every firmware has from which one on there is. `remark` holds {1},
// the date. What says so already stays as it is.
void addReleaseRemarks(CvTable& table, TextView remark);

} // namespace karvo
