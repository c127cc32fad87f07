#include "link/port_choice.h"

#include <string>

namespace karvo
{

int portNumberFromSetting(const std::optional<Text>& stored)
{
    const auto number = stored ? numberFromText(*stored) : std::nullopt;
    return number && *number >= 1 && *number <= highestPortNumber ? *number : 1;
}

int portNumberToBeginWith(const std::vector<int>& present)
{
    return present.size() == 1 ? present.front() : 1;
}

void storePortDevice(Settings& settings, int number, const Text& device)
{
    settings.save("Ports", "COM" + std::to_string(number), device);
}

void choosePort(LinkState& state, SerialPort& port, Settings& settings, int number)
{
    state.portNumber = number;
    if (port.isOpen())
        port.close();
    port.setPortNumber(number);
    settings.save("Parameter", "Com_Port", textFromNumber(number));
}

std::vector<int> searchPorts(const LinkState& state, SerialPort& port)
{
    std::vector<int> present;
    if (port.isOpen())
        port.close();
    for (int number = 1; number <= highestPortNumber; ++number) {
        port.setPortNumber(number);
        if (port.open())
            continue;
        port.close();
        present.push_back(number);
    }
    port.setPortNumber(state.portNumber);
    return present;
}

} // namespace karvo
