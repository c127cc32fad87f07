// Keeps a decoder at the values that are being tried: one exchange after the other, never two at a time, and
// always with the newest values.
#pragma once

#include "editors/live_setup.h"
#include "workbench/workbench.h"

#include <chrono>

namespace karvo
{

inline constexpr std::chrono::milliseconds liveTick{200};

class LiveFollow
{
public:
    // The line belongs to the caller as long as this lives.
    LiveFollow(Workbench& bench, const LiveSetup& setup) : bench_(bench), setup_(setup) {}

    // Sends what the setup starts from.
    void open();

    // Sends what is being tried. Does nothing while an exchange is under way, or after a failure. Never opens
    // the port: nobody has asked for that.
    void tick();

    // As a tick; while an exchange is under way another one follows it. Takes up again after a failure, and
    // opens a port that was lost.
    void moved();

    // Sends what was there at the beginning, if anything else may have been sent; not over a line that is
    // lost or did not reply to the exchange that stop() waited for.
    void restore();

    // The exchange under way is the last one.
    void stop() { stopped_ = true; }

    bool isUnderWay() const { return underWay_; }
    bool isFollowing() const { return following_; } // the last exchange succeeded
    bool hasLostLine() const { return lineLost_; }  // the last exchange met a closed port; reported once
    bool hasEnded() const { return ended_; }        // the program is being closed

private:
    bool send(const LiveValue& value, ClosedPort closedPort = ClosedPort::leftClosed);
    void noteEnd(LiveEnd end);
    void follow(ClosedPort closedPort);
    void sendTried(ClosedPort closedPort);

    Workbench& bench_;
    const LiveSetup& setup_;
    bool underWay_ = false;
    bool movedMeanwhile_ = false;
    bool following_ = true;
    bool anySent_ = false;
    bool stopped_ = false;
    bool lineLost_ = false;
    bool muteAtTheEnd_ = false; // the exchange that stop() waited for had no reply
    bool ended_ = false;
};

} // namespace karvo
