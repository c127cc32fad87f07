#include "platform/win32_serial_port.h"

#include "platform/win32_line.h"
#include "platform/win32_serial_device.h"

#include <utility>

namespace karvo
{

Win32SerialPort::Win32SerialPort(DeviceOf deviceOf, Post post)
    : deviceOf_(std::move(deviceOf)), post_(std::move(post))
{
}

Win32SerialPort::~Win32SerialPort()
{
    close();
}

std::optional<PortError> Win32SerialPort::open()
{
    if (isOpen())
        return std::nullopt;
    auto device = openSerialDevice(deviceOf_(number_), settings_);
    if (const auto* const error = std::get_if<PortError>(&device))
        return *error;
    opening_ = std::make_shared<int>();
    const auto later = [this, opening = std::weak_ptr(opening_)](std::function<void()> call) {
        post_([opening, call = std::move(call)] {
            if (!opening.expired())
                call();
        });
    };
    line_ = std::make_unique<Win32Line>(
        std::move(std::get<Win32Handle>(device)),
        Win32Line::Told{
            .received = [this, later](const Bytes& bytes) { later([this, bytes] { take(bytes); }); },
            .hungUp = [this, later] { later([this] { hangUp(); }); }});
    return std::nullopt;
}

void Win32SerialPort::close()
{
    opening_.reset();
    line_.reset();
    received_.clear();
}

Bytes Win32SerialPort::readAll()
{
    return std::exchange(received_, {});
}

void Win32SerialPort::write(const Bytes& bytes)
{
    if (isOpen())
        line_->write(bytes);
}

void Win32SerialPort::take(const Bytes& bytes)
{
    received_.insert(received_.end(), bytes.begin(), bytes.end());
    notify();
}

void Win32SerialPort::hangUp()
{
    close();
    notify();
}

void Win32SerialPort::notify()
{
    if (notice_)
        notice_();
}

} // namespace karvo
