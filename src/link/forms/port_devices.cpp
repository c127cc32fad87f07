#include "link/forms/port_devices.h"

#include "ui/captions.h"
#include "ui/typed_text.h"

namespace karvo
{

QString portName(int number)
{
    return QStringLiteral("COM%1").arg(number);
}

QString deviceText(const LanguageTables& texts, const PortDevice& device, int number)
{
    if (device.device == portName(number))
        return device.description;
    if (device.description.isEmpty())
        return device.device;
    return filledCaption(texts, Caption::portToolTip,
                         {typedText(device.device), typedText(device.description)});
}

QString portTip(const LanguageTables& texts, const std::vector<PortDevice>& devices, int number)
{
    if (number < 1 || static_cast<std::size_t>(number) > devices.size())
        return {};
    return deviceText(texts, devices[static_cast<std::size_t>(number) - 1], number);
}

} // namespace karvo
