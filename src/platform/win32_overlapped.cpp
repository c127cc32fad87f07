#include "platform/win32_overlapped.h"

namespace karvo
{

Win32Overlapped::Win32Overlapped(HANDLE device, HANDLE stop)
    : device_(device), stop_(stop), done_(makeLastingEvent())
{
}

std::optional<std::size_t> Win32Overlapped::read(std::span<std::uint8_t> bytes)
{
    return finish(::ReadFile(device_, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, begin()));
}

std::optional<std::size_t> Win32Overlapped::write(std::span<const std::uint8_t> bytes)
{
    return finish(::WriteFile(device_, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, begin()));
}

OVERLAPPED* Win32Overlapped::begin()
{
    operation_ = {};
    operation_.hEvent = done_.get();
    return &operation_;
}

std::optional<std::size_t> Win32Overlapped::finish(bool hasStarted)
{
    if (!hasStarted && ::GetLastError() != ERROR_IO_PENDING)
        return std::nullopt;
    // An operation that is through counts, even when it is to stop as well.
    const HANDLE awaited[] = {done_.get(), stop_};
    if (::WaitForMultipleObjects(2, awaited, FALSE, INFINITE) != WAIT_OBJECT_0)
        ::CancelIoEx(device_, &operation_);
    // Until the system says so it may still use the caller's bytes, cancelled or not.
    DWORD count = 0;
    if (!::GetOverlappedResult(device_, &operation_, &count, TRUE))
        return std::nullopt;
    return count;
}

} // namespace karvo
