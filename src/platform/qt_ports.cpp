#include "platform/port_map.h"

#include <QSerialPortInfo>

namespace karvo
{

namespace
{

std::optional<UsbIds> usbIds(const QSerialPortInfo& port)
{
    if (!port.hasVendorIdentifier() || !port.hasProductIdentifier())
        return std::nullopt;
    return UsbIds{port.vendorIdentifier(), port.productIdentifier()};
}

std::vector<SystemPort> listedPorts()
{
    std::vector<SystemPort> ports;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        const QString words = port.description().isEmpty() ? port.manufacturer() : port.description();
        ports.push_back({port.systemLocation(), port.portName(), words, usbIds(port)});
    }
    return ports;
}

} // namespace

PortSystem PortSystem::own()
{
    return {PortNaming::unixDevices, listedPorts};
}

} // namespace karvo
