// What a person is asked before a curve is computed.
#pragma once

#include "editors/speed_curves.h"
#include "program/prompts.h"

namespace karvo
{

enum class CurveQuestions {
    firstAndLast,
    firstOnly, // step 28 stays as it is
    lastOnly,  // step 1 stays as it is
    firstMiddleAndLast
};

struct CurveRequest {
    CurveQuestions questions;
    const SpeedTable& shown; // what is proposed, and what stays
    int highest;
};

// Asks until each value is sound. Nothing after an empty or cancelled answer. Where the end that stays leaves
// no sound value for the other one, says why and gives up.
std::optional<CurvePoints> askForCurve(const CurveRequest& request, Prompts& prompts,
                                       const LanguageTables& texts);

} // namespace karvo
