// The line to the programming interface, as the logic sees it.
#pragma once

#include "program/text.h"

#include <cstddef>
#include <functional>
#include <optional>

namespace karvo
{

enum class Parity { none, odd, even };

// 8 data bits always.
struct LineSettings {
    int baud = 4800;
    Parity parity = Parity::none;
    int stopBits = 1;
    friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

// What a person can do something about.
enum class PortFault {
    unknown,
    absent, // nothing is plugged in there
    busy,   // another program has it
    denied, // this user may not open it
    notSerial
};

// Why a port could not be opened.
struct PortError {
    Text description; // the system's own words
    Text accessGroup; // Linux: the group that grants access to the device, when access was denied; else empty
    PortFault fault = PortFault::unknown;
    Text device = {}; // the system's name of it, such as "/dev/ttyUSB0" or "COM5"; empty when unknown
};

class SerialPort
{
public:
    virtual ~SerialPort() = default;

    // Port number n (1 to 31) is COMn. Takes effect at the next open.
    virtual void setPortNumber(int number) = 0;
    virtual int portNumber() const = 0;

    // Takes effect at the next open.
    virtual void setSettings(const LineSettings& settings) = 0;

    // Nothing on success. Opening an open port does nothing.
    virtual std::optional<PortError> open() = 0;
    virtual void close() = 0;

    // False after close() and after a hang-up (an adapter pulled out); open() then opens anew.
    virtual bool isOpen() const = 0;

    virtual std::size_t bytesWaiting() const = 0;

    // Takes everything that waits; empty on a closed port.
    virtual Bytes readAll() = 0;

    // Queues the bytes in one piece and returns; on a closed port they are lost.
    virtual void write(const Bytes& bytes) = 0;

    // Called from the event loop whenever bytes or a hang-up have arrived.
    virtual void setNotice(std::function<void()> notice) = 0;
};

} // namespace karvo
