#pragma once

#include "platform/win32_handle.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace karvo
{

// Reads from or writes to a device that was opened for overlapped operation, one at a time, and sleeps until
// that is through, the device fails, or `stop` (a lasting event) is signalled.
class Win32Overlapped
{
public:
    // Both handles have to outlive this object.
    Win32Overlapped(HANDLE device, HANDLE stop);

    // How many bytes went over; nothing when the device failed or `stop` came first.
    std::optional<std::size_t> read(std::span<std::uint8_t> bytes);
    std::optional<std::size_t> write(std::span<const std::uint8_t> bytes);

private:
    OVERLAPPED* begin();
    std::optional<std::size_t> finish(bool hasStarted);

    const HANDLE device_;
    const HANDLE stop_;
    const Win32Handle done_;
    OVERLAPPED operation_{};
};

} // namespace karvo
