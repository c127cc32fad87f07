// The opening of a serial device of Windows.
#pragma once

#include "platform/win32_handle.h"
#include "program/serial_port.h"

#include <variant>

namespace karvo
{

// For this program alone, for overlapped operation: 8 data bits, no flow control, DTR and RTS on, nothing
// waiting in either direction. A read lasts until all bytes that it asks for have come, a write until all are
// gone. `name`: "COM40", or any other that stands behind "\\.\".
std::variant<Win32Handle, PortError> openSerialDevice(const Text& name, const LineSettings& settings);

} // namespace karvo
