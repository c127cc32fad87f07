// Which device stands behind port number n, "COMn".
#pragma once

#include "program/settings.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace karvo
{

// A device for this run, as given by "--map-port COM5=/dev/ttyUSB0".
struct PortMapping {
    int number = 0; // 1 to 31
    QString device;
};

enum class PortMappingError {
    none,
    noEqualsSign,
    noPortName, // what stands before the "=" is none of COM1 to COM31
    noDevice
};

struct ParsedPortMapping {
    PortMapping mapping; // meaningful without an error only
    PortMappingError error = PortMappingError::none;
};

// `argument` is what follows "--map-port", such as "COM5=/dev/ttyUSB0". Letter case of "COM" does not matter.
ParsedPortMapping parsePortMapping(const QString& argument);

// What a person may want to know of a port before he chooses it.
struct PortDescription {
    QString device;
    QString description;    // the system's words for the hardware, and its USB numbers; may be empty
    bool isPresent = false; // something is plugged in there
};

// A device that is plugged in and stands behind no number, with one that is free for it.
struct NewPort {
    int number = 0;
    QString device;
    QString description;
};

// Who made an adapter, and which one it is.
struct UsbIds {
    quint16 vendor = 0;
    quint16 product = 0;
};

// A device as the system lists it.
struct SystemPort {
    QString location; // "/dev/ttyUSB0", on Windows "COM7"
    QString name;     // "ttyUSB0", on Windows "COM7"
    QString description;
    std::optional<UsbIds> usb;
};

enum class PortNaming {
    windows, // the device of port n is called COMn
    unixDevices
};

// What the map knows of the system it runs on.
struct PortSystem {
    PortNaming naming;
    std::function<std::vector<SystemPort>()> list;

    static PortSystem own();
};

// The device is looked up among the mappings of this run (the last one of a number counts), then in the
// settings (section "Ports", key "COM5", the device as value). Else it is COMn on Windows; elsewhere a fixed
// table tells: COM1 to COM4 are /dev/ttyS0 and on, COM5 to COM12 /dev/ttyUSB0 and on, COM13 to COM20
// /dev/ttyACM0 and on. Any other number stands for /dev/COM21 and so on, a name that an administrator may
// give to a device.
class PortMap
{
public:
    explicit PortMap(const Settings& settings, std::vector<PortMapping> mappingsOfThisRun = {},
                     PortSystem system = PortSystem::own());

    QString device(int number) const;

    // Of COM1 to COM31, in this order.
    std::vector<PortDescription> describePorts() const;

    // The numbers are free ones from COM31 down: nobody has mapped them, and nothing is plugged in there.
    std::vector<NewPort> newPorts() const;

private:
    std::optional<QString> mappedDevice(int number) const;
    bool isSameDevice(const QString& left, const QString& right) const;
    const SystemPort* find(const std::vector<SystemPort>& ports, const QString& device) const;
    bool isPresent(const std::vector<SystemPort>& ports, const QString& device) const;

    const Settings& settings_;
    std::vector<PortMapping> mappingsOfThisRun_;
    PortSystem system_;
};

} // namespace karvo
