#pragma once

#include "program/serial_port.h"

#include <memory>

namespace karvo
{

class Win32Line;

// The line over a serial device of Windows. What the device's threads bring is taken over in calls of the
// event loop, so that nothing changes between two calls of this class; what they bring too late, behind a
// close() or another opening, is dropped.
//
// A hang-up closes the port and gives the notice once.
class Win32SerialPort : public SerialPort
{
public:
    // The system's name of a port's device, such as "COM5".
    using DeviceOf = std::function<Text(int number)>;

    // Makes the event loop carry out a call; from any thread, in their order.
    using Post = std::function<void(std::function<void()> call)>;

    // Calls that are still posted when the port goes are harmless.
    Win32SerialPort(DeviceOf deviceOf, Post post);
    ~Win32SerialPort() override;

    void setPortNumber(int number) override { number_ = number; }
    int portNumber() const override { return number_; }
    void setSettings(const LineSettings& settings) override { settings_ = settings; }

    std::optional<PortError> open() override;
    void close() override;
    bool isOpen() const override { return line_ != nullptr; }

    std::size_t bytesWaiting() const override { return received_.size(); }
    Bytes readAll() override;
    void write(const Bytes& bytes) override;
    void setNotice(std::function<void()> notice) override { notice_ = std::move(notice); }

private:
    void take(const Bytes& bytes);
    void hangUp();
    void notify();

    const DeviceOf deviceOf_;
    const Post post_;
    int number_ = 1;
    LineSettings settings_;
    std::shared_ptr<const int>
        opening_;                     // gone as soon as what belongs to this opening has no meaning any more
    std::unique_ptr<Win32Line> line_; // none while the port is closed
    Bytes received_;
    std::function<void()> notice_;
};

} // namespace karvo
