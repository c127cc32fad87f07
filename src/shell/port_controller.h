// Which port the main window works with.
#pragma once

#include "link/forms/port_devices.h"
#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class EntryController;
class PortBar;

class PortController : public QObject
{
public:
    PortController(Workbench& bench, QWidget& window, EntryController& entry, PortBar& portBar,
                   ListPortDevices listDevices, ListNewPorts listNewPorts);

    // Searches what is plugged in.
    void find();

private:
    void choose(int number);
    void showChosen();

    Workbench& bench_;
    QWidget& window_;
    EntryController& entry_;
    PortBar& portBar_;
    ListPortDevices listDevices_;
    ListNewPorts listNewPorts_;
};

} // namespace karvo
