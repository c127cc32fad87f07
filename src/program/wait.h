// The one place that lets events run while something is awaited.
#pragma once

#include <chrono>
#include <functional>

namespace karvo
{

enum class WaitResult {
    met,      // the condition holds
    timedOut, // the limit passed first
    ended     // the program is being closed: unwind, start nothing more
};

class Wait
{
public:
    virtual ~Wait() = default;

    // Lets events run until `condition` holds or `limit` has passed. The condition is tested at once and
    // after each wake(). Sleeps between events. Waits never nest.
    virtual WaitResult until(const std::function<bool()>& condition, std::chrono::milliseconds limit) = 0;

    // On a clock that never goes back, since an arbitrary start; it runs on while the computer sleeps.
    virtual std::chrono::microseconds now() const = 0;

    // The awaited state may have changed; called by whoever changes it. Without a wait under way it does
    // nothing.
    virtual void wake() = 0;

    // Lets events run for at least this long.
    WaitResult pause(std::chrono::milliseconds duration)
    {
        const auto result = until([] { return false; }, duration);
        return result == WaitResult::timedOut ? WaitResult::met : result;
    }
};

} // namespace karvo
