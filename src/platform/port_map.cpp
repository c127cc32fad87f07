#include "platform/port_map.h"

#include "platform/text_conversion.h"

#include <QFileInfo>

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

QString descriptionOf(const SystemPort& port)
{
    if (!port.usb)
        return port.description;
    const QString ids = QStringLiteral("USB %1:%2")
                            .arg(port.usb->vendor, 4, 16, QLatin1Char('0'))
                            .arg(port.usb->product, 4, 16, QLatin1Char('0'));
    return port.description.isEmpty() ? ids : QStringLiteral("%1 (%2)").arg(port.description, ids);
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

PortMap::PortMap(const Settings& settings, std::vector<PortMapping> mappingsOfThisRun, PortSystem system)
    : settings_(settings), mappingsOfThisRun_(std::move(mappingsOfThisRun)), system_(std::move(system))
{
}

std::optional<QString> PortMap::mappedDevice(int number) const
{
    const auto given =
        std::find_if(mappingsOfThisRun_.rbegin(), mappingsOfThisRun_.rend(),
                     [number](const PortMapping& mapping) { return mapping.number == number; });
    if (given != mappingsOfThisRun_.rend())
        return given->device;
    const Text stored = settings_.get("Ports", portName(number).toStdString()).value_or(Text());
    const QString device = toQString(trimmed(stored));
    return device.isEmpty() ? std::nullopt : std::optional(device);
}

QString PortMap::device(int number) const
{
    const auto mapped = mappedDevice(number);
    if (mapped)
        return *mapped;
    return system_.naming == PortNaming::windows ? portName(number) : usualDevice(number);
}

// Devices often have further names, such as those in /dev/serial/by-id.
bool PortMap::isSameDevice(const QString& left, const QString& right) const
{
    if (system_.naming == PortNaming::windows)
        return left.compare(right, Qt::CaseInsensitive) == 0;
    const QString canonical = QFileInfo(left).canonicalFilePath();
    return left == right || (!canonical.isEmpty() && canonical == QFileInfo(right).canonicalFilePath());
}

const SystemPort* PortMap::find(const std::vector<SystemPort>& ports, const QString& device) const
{
    const auto found = std::find_if(ports.begin(), ports.end(), [&](const SystemPort& port) {
        return isSameDevice(device, port.location) || device == port.name;
    });
    return found == ports.end() ? nullptr : &*found;
}

// The system lists hardware alone: other devices, such as a pseudo terminal, are there when their names are.
// The names of built-in ports are there whether the computer has them or not.
bool PortMap::isPresent(const std::vector<SystemPort>& ports, const QString& device) const
{
    if (find(ports, device) != nullptr)
        return true;
    return system_.naming == PortNaming::unixDevices && !device.startsWith(QLatin1String("/dev/ttyS")) &&
           QFileInfo::exists(device);
}

std::vector<PortDescription> PortMap::describePorts() const
{
    const auto ports = system_.list();
    std::vector<PortDescription> descriptions;
    for (int number = 1; number <= highestNumber; ++number) {
        const QString name = device(number);
        const SystemPort* const port = find(ports, name);
        descriptions.push_back(
            {name, port != nullptr ? descriptionOf(*port) : QString(), isPresent(ports, name)});
    }
    return descriptions;
}

std::vector<NewPort> PortMap::newPorts() const
{
    const auto ports = system_.list();
    std::vector<NewPort> fresh;
    int number = highestNumber;
    for (const SystemPort& port : ports) {
        bool hasNumber = false;
        for (int other = 1; other <= highestNumber && !hasNumber; ++other)
            hasNumber = isSameDevice(device(other), port.location) || device(other) == port.name;
        if (hasNumber)
            continue;
        while (number >= 1 && (mappedDevice(number) || isPresent(ports, device(number))))
            --number;
        if (number < 1)
            break;
        fresh.push_back({number--, port.location, descriptionOf(port)});
    }
    return fresh;
}

} // namespace karvo
