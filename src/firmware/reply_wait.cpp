#include "firmware/reply_wait.h"

namespace karvo
{

ReplyEnd awaitReply(Link& link, std::size_t count)
{
    const auto arrived = [&] { return !link.port.isOpen() || link.port.bytesWaiting() >= count; };
    const auto result = link.wait.until(arrived, link.state.timeOutInterval);
    const bool lost = !link.port.isOpen();
    link.state.lastReply = link.port.readAll();
    if (result == WaitResult::ended)
        return ReplyEnd::ended;
    if (lost)
        return ReplyEnd::lineLost;
    return result == WaitResult::met ? ReplyEnd::replied : ReplyEnd::timedOut;
}

} // namespace karvo
