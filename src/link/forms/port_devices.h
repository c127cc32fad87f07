// What stands behind the names COM1 to COM31, in words.
#pragma once

#include "language/language_tables.h"

#include <QString>

#include <functional>
#include <vector>

namespace karvo
{

struct PortDevice {
    QString device;      // the system's name, such as "/dev/ttyUSB0"
    QString description; // the system's words for the hardware; empty when nothing is plugged in there
};

// Of COM1 to COM31, in this order; asks the system anew.
using ListPortDevices = std::function<std::vector<PortDevice>()>;

// "COM5".
QString portName(int number);

// Device and description; empty for a number that the devices lack.
QString portTip(const LanguageTables& texts, const std::vector<PortDevice>& devices, int number);

} // namespace karvo
