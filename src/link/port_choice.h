// Choosing the port of the programming interface, and finding out which ports there are.
#pragma once

#include "link/link.h"
#include "program/settings.h"

#include <vector>

namespace karvo
{

inline constexpr int highestPortNumber = 31;

// The stored setting "Com_Port"; 1 for anything outside 1 to 31.
int portNumberFromSetting(const std::optional<Text>& stored);

// Nothing is stored: the only port at which a device is plugged in, else 1.
int portNumberToBeginWith(const std::vector<int>& present);

// From now on the device stands behind this port number.
void storePortDevice(Settings& settings, int number, const Text& device);

// Closes an open port, takes the number over and stores it; the next exchange opens the new port.
void choosePort(LinkState& state, SerialPort& port, Settings& settings, int number);

// The numbers of all ports that open without error, ascending. An open port is closed first; afterwards the
// port number is the one it was, and the port is closed.
std::vector<int> searchPorts(const LinkState& state, SerialPort& port);

} // namespace karvo
