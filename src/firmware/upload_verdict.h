// An upload in words: what its replies say, and its log.
#pragma once

#include "firmware/upload.h"

namespace karvo
{

// What the upload is doing; that of the pages has places for a page and how many there are.
Caption captionOfPhase(UploadPhase phase);

// Whether the decoder has its firmware; if not, what was not taken, what that means and what to do. Several
// lines, without a line end behind the last. Empty when nothing was sent.
Text uploadVerdict(const LanguageTables& texts, const UploadReport& report);

// Two lines, without a line end behind them: the bytes of the message, and those of the reply.
Text uploadLog(const LanguageTables& texts, const UploadStep& step);

} // namespace karvo
