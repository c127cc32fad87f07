#pragma once

#include "platform/win32_handle.h"
#include "program/text.h"

#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <optional>

namespace karvo
{

// An open serial device, and the two threads that read and write it.
class Win32Line
{
public:
    // Called by the threads, until the line's destructor has returned.
    struct Told {
        std::function<void(Bytes)> received;
        std::function<void()> hungUp; // neither thread goes on; each may tell
    };

    Win32Line(Win32Handle device, Told told);

    // Lets the frames that are queued leave first, as long as that takes less than a second: half a frame
    // might stand for another one.
    ~Win32Line();

    // Queues the frame; returns at once.
    void write(Bytes frame);

private:
    void receive();
    void send();
    bool sendQueued(class Win32Overlapped& operation);
    std::size_t waitingBytes() const;
    std::optional<Bytes> nextFrame();

    const Win32Handle device_;
    const Told told_;
    const Win32Handle ending_ = makeLastingEvent(); // no more reading; the last frames leave
    const Win32Handle givenUp_ = makeLastingEvent();
    const Win32Handle queued_ = makeSingleEvent();
    std::mutex lock_; // of `frames_`
    std::deque<Bytes> frames_;
    std::future<void> reader_;
    std::future<void> writer_;
};

} // namespace karvo
