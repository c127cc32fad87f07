#include "shell/port_controller.h"

#include "link/forms/aktive_com.h"
#include "link/port_choice.h"
#include "shell/entry_controller.h"
#include "shell/port_bar.h"

namespace karvo
{

PortController::PortController(Workbench& bench, QWidget& window, EntryController& entry, PortBar& portBar,
                               ListPortDevices listDevices, ListNewPorts listNewPorts)
    : bench_(bench),
      window_(window),
      entry_(entry),
      portBar_(portBar),
      listDevices_(std::move(listDevices)),
      listNewPorts_(std::move(listNewPorts))
{
    connect(&portBar, &PortBar::portChosen, this, &PortController::choose);
    showChosen();
}

void PortController::find()
{
    Aktive_COM search(bench_.state.link, bench_.port, bench_.settings, bench_.state.texts, listDevices_,
                      listNewPorts_, &window_);
    search.exec();
    showChosen();
}

void PortController::choose(int number)
{
    if (bench_.state.lineBusy || !entry_.takePending())
        showChosen();
    else
        choosePort(bench_.state.link, bench_.port, bench_.settings, number);
}

void PortController::showChosen()
{
    portBar_.showPort(bench_.state.link.portNumber);
}

} // namespace karvo
