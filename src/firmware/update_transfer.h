// The part of an update that changes the decoder: from the letter "A" to the closing block.
#pragma once

#include "firmware/interface_update.h"
#include "firmware/update_verdict.h"

namespace karvo
{

// Ends as `sent`, `notConfirmed`, `stopped`, `brokenOff` or `ended`; nothing of it has been reported.
UpdateEnd sendUpdate(Workbench& bench, const UpdateSetup& setup, const UpdateFile& file,
                     UpdateVerdict& verdict);

} // namespace karvo
