// The line over the serial devices of the system that the program runs on.
#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
#include "platform/port_map.h"
#include "platform/win32_serial_port.h"

#include <QObject>
#else
#include "platform/qt_serial_port.h"
#endif

namespace karvo
{

#ifdef Q_OS_WIN
class SystemSerialPort : public QObject, public Win32SerialPort
{
public:
    explicit SystemSerialPort(const PortMap& map, QObject* parent = nullptr);
};
#else
using SystemSerialPort = QtSerialPort;
#endif

} // namespace karvo
