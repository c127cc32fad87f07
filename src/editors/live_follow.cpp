#include "editors/live_follow.h"

namespace karvo
{

void LiveFollow::open()
{
    if (!underWay_ && !stopped_)
        send(setup_.opening(), ClosedPort::opened);
}

void LiveFollow::tick()
{
    if (!underWay_ && !stopped_ && following_)
        follow(ClosedPort::leftClosed);
}

void LiveFollow::moved()
{
    movedMeanwhile_ = underWay_;
    if (underWay_ || stopped_)
        return;
    following_ = true;
    follow(ClosedPort::opened);
}

void LiveFollow::restore()
{
    stopped_ = true;
    if (!anySent_ || underWay_ || ended_ || lineLost_ || muteAtTheEnd_)
        return;
    for (const int channel : setup_.channels()) {
        if (!send(setup_.stored(channel)))
            return;
    }
}

void LiveFollow::follow(ClosedPort closedPort)
{
    do {
        movedMeanwhile_ = false;
        sendTried(closedPort);
        closedPort = ClosedPort::leftClosed;
    } while (movedMeanwhile_ && following_ && !stopped_);
}

// What is tried is asked for channel by channel: it may have moved during the exchange before.
void LiveFollow::sendTried(ClosedPort closedPort)
{
    for (const int channel : setup_.channels()) {
        if (stopped_ || !send(setup_.tried(channel), closedPort))
            return;
        closedPort = ClosedPort::leftClosed; // lost since then: that is told, not mended behind his back
    }
}

bool LiveFollow::send(const LiveValue& value, ClosedPort closedPort)
{
    underWay_ = true;
    Link link = bench_.link();
    noteEnd(sendLiveValue(link, value, closedPort));
    if (lineLost_)
        bench_.prompts.message(bench_.state.texts.message(Message::liveLineLost), PromptIcon::warning);
    underWay_ = false;
    return following_;
}

void LiveFollow::noteEnd(LiveEnd end)
{
    following_ = end == LiveEnd::sent;
    ended_ = end == LiveEnd::ended;
    lineLost_ = end == LiveEnd::lineLost;
    muteAtTheEnd_ = stopped_ && end == LiveEnd::noReply;
    anySent_ = anySent_ || following_;
}

} // namespace karvo
