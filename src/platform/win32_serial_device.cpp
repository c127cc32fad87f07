#include "platform/win32_serial_device.h"

#include "platform/system_words.h"
#include "platform/win32_wide.h"

#include <string>

namespace karvo
{

namespace
{

PortFault portFault(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_GEN_FAILURE: // a name of the system's behind which there is no hardware
    case ERROR_DEV_NOT_EXIST:
    case ERROR_DEVICE_NOT_CONNECTED:
    case ERROR_DEVICE_REMOVED:
    case ERROR_NOT_READY:
    case ERROR_SEM_TIMEOUT: // a wireless adapter out of reach
        return PortFault::absent;
    case ERROR_ACCESS_DENIED: // Windows says so of a port that is open elsewhere
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
        return PortFault::busy;
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_HANDLE:
    case ERROR_NOT_SUPPORTED:
        return PortFault::notSerial;
    default:
        return PortFault::unknown;
    }
}

// Anything above COM9 is found with the prefix alone.
Win32Handle openDevice(const Text& name)
{
    const Text path = name.starts_with(u"\\\\") ? name : u"\\\\.\\" + name;
    const HANDLE device = ::CreateFileW(wide(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    return Win32Handle(device == INVALID_HANDLE_VALUE ? nullptr : device);
}

BYTE dcbParity(Parity parity)
{
    switch (parity) {
    case Parity::odd:
        return ODDPARITY;
    case Parity::even:
        return EVENPARITY;
    case Parity::none:
        break;
    }
    return NOPARITY;
}

bool applySettings(HANDLE device, const LineSettings& settings)
{
    DCB line{};
    line.DCBlength = sizeof line;
    if (!::GetCommState(device, &line))
        return false;
    line.BaudRate = static_cast<DWORD>(settings.baud);
    line.ByteSize = 8;
    line.Parity = dcbParity(settings.parity);
    line.StopBits = settings.stopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
    line.fBinary = TRUE;
    line.fParity = settings.parity != Parity::none;
    line.fOutxCtsFlow = line.fOutxDsrFlow = line.fDsrSensitivity = FALSE;
    line.fOutX = line.fInX = line.fNull = line.fErrorChar = FALSE;
    line.fAbortOnError = FALSE; // a disturbed byte must not end what is under way
    // Simple interfaces draw their power from these two lines.
    line.fDtrControl = DTR_CONTROL_ENABLE;
    line.fRtsControl = RTS_CONTROL_ENABLE;
    return ::SetCommState(device, &line);
}

bool prepare(HANDLE device, const LineSettings& settings)
{
    COMMTIMEOUTS none{};
    if (!applySettings(device, settings) || !::SetCommTimeouts(device, &none))
        return false;
    // Not every driver heeds what the settings say of these two; a device may lack them, too.
    ::EscapeCommFunction(device, SETDTR);
    ::EscapeCommFunction(device, SETRTS);
    // The system may still hold bytes that came before.
    ::PurgeComm(device, PURGE_RXCLEAR | PURGE_TXCLEAR);
    return true;
}

} // namespace

std::variant<Win32Handle, PortError> openSerialDevice(const Text& name, const LineSettings& settings)
{
    Win32Handle device = openDevice(name);
    if (device && prepare(device.get(), settings))
        return device;
    const DWORD error = ::GetLastError();
    const Text words = systemWords({static_cast<int>(error), std::system_category()});
    return PortError{words, {}, portFault(error), name};
}

} // namespace karvo
