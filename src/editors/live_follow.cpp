#include "editors/live_follow.h"

namespace karvo
{

void LiveFollow::open()
{
    if (!underWay_ && !stopped_)
        send(setup_.opening());
}

void LiveFollow::tick()
{
    if (!underWay_ && !stopped_ && following_)
        follow();
}

void LiveFollow::moved()
{
    movedMeanwhile_ = underWay_;
    if (underWay_ || stopped_)
        return;
    following_ = true;
    follow();
}

void LiveFollow::restore()
{
    stopped_ = true;
    if (!anySent_ || underWay_ || ended_)
        return;
    for (const int channel : setup_.channels()) {
        if (!send(setup_.stored(channel)))
            return;
    }
}

void LiveFollow::follow()
{
    do {
        movedMeanwhile_ = false;
        sendTried();
    } while (movedMeanwhile_ && following_ && !stopped_);
}

// What is tried is asked for channel by channel: it may have moved during the exchange before.
void LiveFollow::sendTried()
{
    for (const int channel : setup_.channels()) {
        if (stopped_ || !send(setup_.tried(channel)))
            return;
    }
}

bool LiveFollow::send(const LiveValue& value)
{
    underWay_ = true;
    Link link = bench_.link();
    const auto end = sendLiveValue(link, value);
    underWay_ = false;
    following_ = end == LiveEnd::sent;
    ended_ = end == LiveEnd::ended;
    anySent_ = anySent_ || following_;
    return following_;
}

} // namespace karvo
