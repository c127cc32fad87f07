// The block read with which writing many CVs begins: what the decoder holds at this moment.
#pragma once

#include "link/block_read.h"

namespace karvo
{

// Differs from the full read: "%" only asks whether somebody is there, the decoder type stays the one that
// is known, and the long block has no longer than any other reply. CV1 to CV1030 of the image are zero before
// the block comes; when none comes, the image is as it was. Never returns `unknownDecoder`.
ReadEnd readForSave(Link& link, CvImage& image);

} // namespace karvo
