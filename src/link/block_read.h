// What the two block reads share (docs/protocol.md, "The block").
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

// For as long as it lives a read is under way, which the person can stop. Takes the hourglass and the long
// time-out back on every way out.
class ReadGuard
{
public:
    explicit ReadGuard(Link& link);
    ~ReadGuard();
    ReadGuard(const ReadGuard&) = delete;
    ReadGuard& operator=(const ReadGuard&) = delete;

private:
    Link& link_;
};

void showReadStatus(Link& link);

// Tells the person that nothing, or not enough, has come.
ReadEnd reportNoReplyToRead(Link& link);

// Sends "ER", awaits the block of the decoder type at hand within the time-out interval as it is set, checks
// the block and copies it into the image.
ReadEnd fetchBlock(Link& link, CvImage& image);

// Puts the block's data bytes into the image when its last byte is their check byte; else changes nothing.
bool takeBlock(const Bytes& block, CvImage& image);

} // namespace karvo
