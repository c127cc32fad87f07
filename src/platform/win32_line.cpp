#include "platform/win32_line.h"

#include "platform/win32_overlapped.h"

#include <algorithm>
#include <chrono>

namespace karvo
{

namespace
{

constexpr std::chrono::seconds longestFarewell{1};
constexpr std::size_t mostAtOnce = 4096;

} // namespace

Win32Line::Win32Line(Win32Handle device, Told told)
    : device_(std::move(device)),
      told_(std::move(told)),
      reader_(std::async(std::launch::async, [this] { receive(); })),
      writer_(std::async(std::launch::async, [this] { send(); }))
{
}

Win32Line::~Win32Line()
{
    ::SetEvent(ending_.get());
    writer_.wait_for(longestFarewell);
    ::SetEvent(givenUp_.get());
    writer_.wait();
    reader_.wait();
}

void Win32Line::write(Bytes frame)
{
    {
        const std::lock_guard guard(lock_);
        frames_.push_back(std::move(frame));
    }
    ::SetEvent(queued_.get());
}

std::optional<Bytes> Win32Line::nextFrame()
{
    const std::lock_guard guard(lock_);
    if (frames_.empty())
        return std::nullopt;
    Bytes frame = std::move(frames_.front());
    frames_.pop_front();
    return frame;
}

std::size_t Win32Line::waitingBytes() const
{
    COMSTAT state{};
    DWORD errors = 0;
    const bool isKnown = ::ClearCommError(device_.get(), &errors, &state);
    return isKnown ? std::min<std::size_t>(state.cbInQue, mostAtOnce) : 0;
}

// Sleeps until one byte comes, then takes what has come with it. A system's notice of bytes would do as well,
// but not every driver gives one.
void Win32Line::receive()
{
    Win32Overlapped operation(device_.get(), ending_.get());
    Bytes bytes(1);
    while (operation.read(bytes).value_or(0) == 1) {
        if (const auto more = waitingBytes(); more > 0) {
            bytes.resize(1 + more);
            bytes.resize(1 + operation.read(std::span(bytes).subspan(1)).value_or(0));
        }
        told_.received(bytes);
        bytes.resize(1);
    }
    told_.hungUp();
}

void Win32Line::send()
{
    Win32Overlapped operation(device_.get(), givenUp_.get());
    // Where both are signalled the first one counts.
    const HANDLE awaited[] = {queued_.get(), ending_.get()};
    while (::WaitForMultipleObjects(2, awaited, FALSE, INFINITE) == WAIT_OBJECT_0) {
        if (sendQueued(operation))
            continue;
        told_.hungUp();
        return;
    }
}

bool Win32Line::sendQueued(Win32Overlapped& operation)
{
    while (const auto frame = nextFrame()) {
        if (operation.write(*frame) != frame->size())
            return false;
    }
    return true;
}

} // namespace karvo
