// What stands behind the names COM1 to COM31, in words.
#pragma once

#include "language/language_tables.h"

#include <QString>

#include <functional>
#include <vector>

namespace karvo
{

struct PortDevice {
    QString device;        // the system's name, such as "/dev/ttyUSB0"
    QString description;   // the system's words for the hardware; may be empty
    bool isAbsent = false; // nothing is plugged in there
};

// A device that stands behind no number yet, with one that is free for it.
struct NewPortDevice {
    int number = 0;
    PortDevice device;
};

// Of COM1 to COM31, in this order; asks the system anew.
using ListPortDevices = std::function<std::vector<PortDevice>()>;

using ListNewPorts = std::function<std::vector<NewPortDevice>()>;

// "COM5".
QString portName(int number);

// Device and description, without a name that says "COM5" once more.
QString deviceText(const LanguageTables& texts, const PortDevice& device, int number);

// The same; empty for a number that the devices lack.
QString portTip(const LanguageTables& texts, const std::vector<PortDevice>& devices, int number);

} // namespace karvo
