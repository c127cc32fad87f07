#include "link/block_read.h"

#include "link/fault_text.h"
#include "link/identification.h"
#include "program/check_byte.h"

#include <algorithm>

namespace karvo
{

namespace
{

const Bytes readCommand = {'E', 'R'};

} // namespace

ReadGuard::ReadGuard(Link& link) : link_(link)
{
    link_.state.readUnderWay = true;
    link_.view.showReading(true);
}

ReadGuard::~ReadGuard()
{
    link_.state.readUnderWay = false;
    link_.view.showReading(false);
    link_.state.timeOutInterval = usualTimeOut;
    link_.view.showHourglass(false);
    if (link_.stopRequested != nullptr && *link_.stopRequested)
        link_.view.showStatus(link_.texts.caption(Caption::readStopped));
}

void showReadStatus(Link& link)
{
    link.view.showStatus(link.texts.caption(Caption::readAll));
}

ReadEnd reportNoReplyToRead(Link& link)
{
    link.state.timeOut = false;
    link.prompts.message(noReplyText(link));
    link.view.showStatus(link.texts.caption(Caption::noReplyStatus));
    return ReadEnd::noReply;
}

ReadEnd fetchBlock(Link& link, CvImage& image)
{
    const auto length = blockReplyLength(link.state.typeCode);
    switch (Exchange(link, readCommand, ReplyLength::exactly(length), Pointer::hourglass)) {
    case ExchangeEnd::ended:
        return ReadEnd::ended;
    case ExchangeEnd::timedOut:
        return reportNoReplyToRead(link);
    case ExchangeEnd::replied:
        break;
    }
    if (takeBlock(link.state.lastReply, image))
        return ReadEnd::read;
    breakLineRun(link.state);
    link.prompts.message(link.texts.message(Message::wrongCheckByte));
    showReadStatus(link);
    return ReadEnd::wrongCheckByte;
}

bool takeBlock(const Bytes& block, CvImage& image)
{
    if (block.empty() || block.size() > image.size())
        return false;
    const auto data = std::span(block).first(block.size() - 1);
    if (checkByte(data) != block.back())
        return false;
    std::copy(data.begin(), data.end(), image.begin() + 1);
    return true;
}

} // namespace karvo
