// Reading a decoder's whole memory in one block (docs/protocol.md, "The block").
#pragma once

#include "link/link.h"

namespace karvo
{

enum class ReadEnd {
    read,           // the image holds the block
    noReply,        // reported; the image is unchanged
    unknownDecoder, // reported
    wrongCheckByte, // reported; the image is unchanged
    ended           // the program is being closed
};

// Identifies the decoder, fetches its block, checks it and copies it into the image; for a receiver its
// single values too. Whatever goes wrong has been shown when it returns. LinkState::lastReply holds the block
// afterwards.
ReadEnd readDecoder(Link& link, CvImage& image, ReceiverValues& receiver);

// Puts the block's data bytes into the image when its last byte is their check byte; else changes nothing.
bool takeBlock(const Bytes& block, CvImage& image);

} // namespace karvo
