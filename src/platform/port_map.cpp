#include "platform/port_map.h"

#include "platform/text_conversion.h"

#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <utility>

namespace karvo
{

namespace
{

constexpr int highestNumber = 31;

QString portName(int number)
{
    return QStringLiteral("COM%1").arg(number);
}

QString usualDevice(int number)
{
    if (number <= 4)
        return QStringLiteral("/dev/ttyS%1").arg(number - 1);
    if (number <= 12)
        return QStringLiteral("/dev/ttyUSB%1").arg(number - 5);
    if (number <= 20)
        return QStringLiteral("/dev/ttyACM%1").arg(number - 13);
    return QStringLiteral("/dev/COM%1").arg(number);
}

// 0 for anything but COM1 to COM31.
int portNumber(const QString& name)
{
    for (int number = 1; number <= highestNumber; ++number) {
        if (name.compare(portName(number), Qt::CaseInsensitive) == 0)
            return number;
    }
    return 0;
}

// Devices often have further names, such as those in /dev/serial/by-id.
bool isSameDevice(const QString& left, const QString& right)
{
    const QString canonical = QFileInfo(left).canonicalFilePath();
    return left == right || (!canonical.isEmpty() && canonical == QFileInfo(right).canonicalFilePath());
}

QString hardwareDescription(const QString& device, const QList<QSerialPortInfo>& present)
{
    for (const QSerialPortInfo& info : present) {
        if (isSameDevice(device, info.systemLocation()) || device == info.portName())
            return info.description().isEmpty() ? info.manufacturer() : info.description();
    }
    return {};
}

} // namespace

ParsedPortMapping parsePortMapping(const QString& argument)
{
    const auto equalsSign = argument.indexOf(QLatin1Char('='));
    if (equalsSign < 0)
        return {{}, PortMappingError::noEqualsSign};
    const int number = portNumber(argument.left(equalsSign).trimmed());
    if (number == 0)
        return {{}, PortMappingError::noPortName};
    const QString device = argument.mid(equalsSign + 1).trimmed();
    if (device.isEmpty())
        return {{}, PortMappingError::noDevice};
    return {{number, device}, PortMappingError::none};
}

PortMap::PortMap(const Settings& settings, std::vector<PortMapping> mappingsOfThisRun)
    : settings_(settings), mappingsOfThisRun_(std::move(mappingsOfThisRun))
{
}

QString PortMap::device(int number) const
{
#ifdef Q_OS_WIN
    return portName(number);
#else
    const auto given =
        std::find_if(mappingsOfThisRun_.rbegin(), mappingsOfThisRun_.rend(),
                     [number](const PortMapping& mapping) { return mapping.number == number; });
    if (given != mappingsOfThisRun_.rend())
        return given->device;
    const Text stored = settings_.get("Ports", portName(number).toStdString()).value_or(Text());
    const QString device = toQString(trimmed(stored));
    return device.isEmpty() ? usualDevice(number) : device;
#endif
}

std::vector<PortDescription> PortMap::describePorts() const
{
    const QList<QSerialPortInfo> present = QSerialPortInfo::availablePorts();
    std::vector<PortDescription> descriptions;
    for (int number = 1; number <= highestNumber; ++number) {
        const QString name = device(number);
        descriptions.push_back({name, hardwareDescription(name, present)});
    }
    return descriptions;
}

} // namespace karvo
