// Reading a decoder's whole memory in one block (docs/protocol.md, "The block"): the full read, and the read
// with which writing begins.
#pragma once

#include "link/link.h"

namespace karvo
{

enum class ReadEnd {
    read,           // the image holds the block
    noReply,        // reported; the image is unchanged
    unknownDecoder, // reported
    wrongCheckByte, // reported; the image is unchanged
    ended           // as ExchangeEnd::ended; the image is unchanged
};

// Identifies the decoder, fetches its block, checks it and copies it into the image; for a receiver its
// single values too. Whatever goes wrong has been shown when it returns. LinkState::lastReply holds the block
// afterwards.
ReadEnd readDecoder(Link& link, CvImage& image, ReceiverValues& receiver);

// What the decoder holds at the moment at which writing begins. Differs from the full read: "%" only asks
// whether somebody is there, the decoder type stays the one that is known, and the long block has no longer
// than any other reply. CV1 to CV1030 of the image are zero before the block comes; when none comes, the
// image is as it was. Never returns `unknownDecoder`.
ReadEnd readForSave(Link& link, CvImage& image);

// Puts the block's data bytes into the image when its last byte is their check byte; else changes nothing.
bool takeBlock(const Bytes& block, CvImage& image);

// The single values that go with an image: of a receiver those of its block, of any other decoder none.
ReceiverValues receiverValuesOf(TypeCode typeCode, const CvImage& image);

} // namespace karvo
