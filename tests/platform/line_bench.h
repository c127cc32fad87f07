// A port with its wait, put together as the program does it.
#pragma once

#include "platform/qt_wait.h"
#include "program/serial_port.h"

#include <QElapsedTimer>

#include <ctime>

namespace karvo::test
{

class LineBench
{
public:
    explicit LineBench(SerialPort& port) : port_(port)
    {
        port_.setNotice([this] {
            ++notices;
            wait.wake();
        });
    }
    ~LineBench() { port_.setNotice({}); }
    LineBench(const LineBench&) = delete;
    LineBench& operator=(const LineBench&) = delete;

    WaitResult waitForBytes(std::size_t count)
    {
        return wait.until([&] { return port_.bytesWaiting() >= count || !port_.isOpen(); },
                          std::chrono::seconds(5));
    }

    // What answers within `count` bytes or the time-out.
    Bytes exchange(const Bytes& command, std::size_t count)
    {
        port_.write(command);
        waitForBytes(count);
        return port_.readAll();
    }

    QtWait wait;
    int notices = 0;

private:
    SerialPort& port_;
};

// Of this process, in milliseconds.
inline double processorTime()
{
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace karvo::test
