#include "platform/qt_serial_port.h"

#include "platform/text_conversion.h"

#include <QFileInfo>

#include <utility>

namespace karvo
{

namespace
{

QSerialPort::Parity qtParity(Parity parity)
{
    switch (parity) {
    case Parity::odd:
        return QSerialPort::OddParity;
    case Parity::even:
        return QSerialPort::EvenParity;
    case Parity::none:
        break;
    }
    return QSerialPort::NoParity;
}

// Errors after which the line still works: a pseudo terminal has no control lines, for example.
bool isHarmless(QSerialPort::SerialPortError error)
{
    return error == QSerialPort::NoError || error == QSerialPort::UnsupportedOperationError ||
           error == QSerialPort::TimeoutError;
}

DeviceAccess deviceAccess(const QString& device)
{
#ifdef Q_OS_WIN
    Q_UNUSED(device);
    return {};
#else
    const QFileInfo info(device.startsWith(QLatin1Char('/')) ? device : QStringLiteral("/dev/") + device);
    return {info.exists() && !(info.isReadable() && info.isWritable()), info.group(),
            info.isFile() || info.isDir()};
#endif
}

PortFault portFault(QSerialPort::SerialPortError error, const DeviceAccess& access)
{
    if (access.denied)
        return PortFault::denied;
    if (access.isFile)
        return PortFault::notSerial;
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
    case QSerialPort::ResourceError: // a name of the system's behind which there is no hardware
        return PortFault::absent;
    case QSerialPort::PermissionError: // though the rights are there
    case QSerialPort::OpenError:
        return PortFault::busy;
    case QSerialPort::UnsupportedOperationError:
        return PortFault::notSerial;
    default:
        return PortFault::unknown;
    }
}

} // namespace

PortError portError(const OpeningFailure& failure, const DeviceAccess& access)
{
    const bool groupHelps = access.denied && access.group != QLatin1StringView("root");
    return {toText(failure.words), groupHelps ? toText(access.group) : Text(),
            portFault(failure.error, access), toText(failure.device)};
}

QtSerialPort::QtSerialPort(const PortMap& map, QObject* parent) : QObject(parent), map_(map)
{
    setObjectName(QStringLiteral("MSComm1"));
}

std::optional<PortError> QtSerialPort::open()
{
    if (isOpen())
        return std::nullopt;
    close();
    device_ = new QSerialPort(map_.device(number_), this);
    device_->setBaudRate(settings_.baud);
    device_->setDataBits(QSerialPort::Data8);
    device_->setParity(qtParity(settings_.parity));
    device_->setStopBits(settings_.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    device_->setFlowControl(QSerialPort::NoFlowControl);
    if (!device_->open(QIODevice::ReadWrite)) {
        const QString name = map_.device(number_);
        const auto error = portError({device_->error(), device_->errorString(), name}, deviceAccess(name));
        close();
        return error;
    }
    // Simple interfaces draw their power from these two lines.
    device_->setDataTerminalReady(true);
    device_->setRequestToSend(true);
    // The system may still hold bytes that came before.
    device_->clear();
    listen();
    return std::nullopt;
}

void QtSerialPort::listen()
{
    connect(device_, &QSerialPort::readyRead, this, &QtSerialPort::notify);
    connect(device_, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (!isHarmless(error))
            hangUp();
    });
}

void QtSerialPort::hangUp()
{
    hungUp_ = true;
    device_->disconnect(this);
    // The device must not be closed inside its own signal.
    const auto closeAndNotify = [this, lost = device_] {
        if (device_ != lost)
            return; // closed or opened anew meanwhile
        close();
        notify();
    };
    QMetaObject::invokeMethod(device_, closeAndNotify, Qt::QueuedConnection);
}

void QtSerialPort::close()
{
    hungUp_ = false;
    if (!device_)
        return;
    QSerialPort* const device = std::exchange(device_, nullptr);
    device->disconnect(this);
    device->close();
    device->deleteLater();
}

std::size_t QtSerialPort::bytesWaiting() const
{
    return isOpen() ? static_cast<std::size_t>(device_->bytesAvailable()) : 0;
}

Bytes QtSerialPort::readAll()
{
    if (!isOpen())
        return {};
    const QByteArray bytes = device_->readAll();
    return Bytes(bytes.begin(), bytes.end());
}

void QtSerialPort::write(const Bytes& bytes)
{
    if (!isOpen())
        return;
    device_->write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    // On Windows nothing would leave before the event loop runs again. An error here may have ended the line.
    if (isOpen())
        device_->flush();
}

void QtSerialPort::notify()
{
    if (notice_)
        notice_();
}

} // namespace karvo
