#pragma once

#include "platform/port_map.h"
#include "program/serial_port.h"

#include <QSerialPort>

namespace karvo
{

// The line over a serial device of the system. Each opening uses a fresh QSerialPort with an unlimited
// receive buffer.
//
// When the device goes away, QSerialPort reports errors without end and stays open. So the first real error
// is the last one heard: from then on the port counts as closed, and the event loop closes the device and
// gives the notice once.
class QtSerialPort : public QObject, public SerialPort
{
    Q_OBJECT

public:
    explicit QtSerialPort(const PortMap& map, QObject* parent = nullptr);

    void setPortNumber(int number) override { number_ = number; }
    int portNumber() const override { return number_; }
    void setSettings(const LineSettings& settings) override { settings_ = settings; }

    std::optional<PortError> open() override;
    void close() override;
    bool isOpen() const override { return device_ && !hungUp_; }

    std::size_t bytesWaiting() const override;
    Bytes readAll() override;
    void write(const Bytes& bytes) override;
    void setNotice(std::function<void()> notice) override { notice_ = std::move(notice); }

private:
    void listen();
    void notify();
    void hangUp();

    const PortMap& map_;
    int number_ = 1;
    LineSettings settings_;
    QSerialPort* device_ = nullptr; // a child of this object; none while the port is closed
    bool hungUp_ = false;
    std::function<void()> notice_;
};

// What the system lets this user do with a device.
struct DeviceAccess {
    bool denied = false; // it exists, and reading or writing it is not allowed
    QString group;       // that owns the device
    bool isFile = false; // a plain file or a folder, no device at all
};

struct OpeningFailure {
    QSerialPort::SerialPortError error;
    QString words; // the system's
    QString device;
};

// To become a member of the group "root" is no advice to give.
PortError portError(const OpeningFailure& failure, const DeviceAccess& access);

} // namespace karvo
