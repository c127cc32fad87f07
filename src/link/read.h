// Reading a decoder's whole memory in one block (docs/protocol.md, "The block").
#pragma once

#include "link/block_read.h"

namespace karvo
{

// Identifies the decoder, fetches its block, checks it and copies it into the image; for a receiver its
// single values too. Whatever goes wrong has been shown when it returns. LinkState::lastReply holds the block
// afterwards.
ReadEnd readDecoder(Link& link, CvImage& image, ReceiverValues& receiver);

// The single values that go with an image: of a receiver those of its block, of any other decoder none.
ReceiverValues receiverValuesOf(TypeCode typeCode, const CvImage& image);

} // namespace karvo
