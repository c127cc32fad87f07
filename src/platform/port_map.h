// Which device stands behind port number n, "COMn".
#pragma once

#include "program/settings.h"

#include <QString>

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
    QString description; // the system's words for the hardware; empty when nothing is plugged in there
};

// On Windows the device of port n is COMn. Elsewhere it is looked up: among the mappings of this run (the
// last one of a number counts), then in the settings (section "Ports", key "COM5", the device as value), then
// in a fixed table: COM1 to COM4 are /dev/ttyS0 and on, COM5 to COM12 /dev/ttyUSB0 and on, COM13 to COM20
// /dev/ttyACM0 and on. Any other number stands for /dev/COM21 and so on, a name that an administrator may
// give to a device.
class PortMap
{
public:
    explicit PortMap(const Settings& settings, std::vector<PortMapping> mappingsOfThisRun = {});

    QString device(int number) const;

    // Of COM1 to COM31, in this order.
    std::vector<PortDescription> describePorts() const;

private:
    const Settings& settings_;
    std::vector<PortMapping> mappingsOfThisRun_;
};

} // namespace karvo
