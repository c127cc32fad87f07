// Whether the list on the bench was made for the vehicle on the line.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"

#include <optional>

namespace karvo
{

// The XT module is a receiver to the line. An empty list fits every vehicle.
bool isOfModel(const CvSet& set, Model model);

// The question whether a list for another generation or processor may be written to this vehicle. Nothing
// when there is none: what one side does not know is no difference, and what the person has accepted for this
// list is asked about no more.
std::optional<Text> otherBuildQuestion(const CvSet& set, const DecoderProfile& vehicle,
                                       const LanguageTables& texts);

} // namespace karvo
