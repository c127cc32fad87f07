// What a description says about the use of a CV: whether the model uses it, whether it can be written, and
// which values it takes. Every way to a write asks here.
#pragma once

#include "cvdata/cv_table.h"

#include <optional>

namespace karvo
{

// The values that the description allows for a CV. A limit that it does not name is 0 or 255; none lies
// beyond these.
struct ValueLimits {
    int lower = 0;
    int upper = 255;

    bool allow(int value) const { return value >= lower && value <= upper; }
};

ValueLimits limitsOf(const CvTable& table, int cv);

// Whether the model uses the CV. A list file of other hands may hold numbers and values alone: where no row
// has a factory value, nothing is known, and every CV that is described counts as used.
bool isUsed(const CvTable& table, int cv);

// A CV that the description names without a use, whose words fit any other such CV. Nothing when all have
// one.
std::optional<int> unusedCvOf(const CvTable& table);

// Whether the decoder alone decides the CV's value: CV7 and CV8 on every model, and what the description
// marks as "read-only" in its field 14 ("mark=read-only").
bool isReadOnly(const CvTable& table, int cv);

// The firmware from which on a model has the CV, as the description marks it ("mark=from=240216"). Empty
// where every firmware has it.
TextView firstFirmwareOf(const CvTable& table, int cv);

} // namespace karvo
