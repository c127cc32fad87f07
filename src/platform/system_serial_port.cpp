#include "platform/system_serial_port.h"

#include "platform/text_conversion.h"

namespace karvo
{

SystemSerialPort::SystemSerialPort(const PortMap& map, QObject* parent)
    : QObject(parent),
      Win32SerialPort([&map](int number) { return toText(map.device(number)); },
                      [this](std::function<void()> call) {
                          QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection);
                      })
{
    setObjectName(QStringLiteral("MSComm1"));
}

} // namespace karvo
