// The search for the ports that are there.
#pragma once

#include "link/forms/port_devices.h"
#include "link/link.h"
#include "program/settings.h"
#include "ui/form.h"

#include <vector>

class QLabel;

namespace karvo
{

class FixedWidthList;

// Searches as soon as it is shown. OK takes the chosen port as the program's, and gives a
// device that has no number yet the one that it is shown with; cancel leaves the number as it
// was.
class Aktive_COM : public Form
{
    Q_OBJECT

public:
    Aktive_COM(LinkState& state, SerialPort& port, Settings& settings, const LanguageTables& texts,
               ListPortDevices listDevices, ListNewPorts listNewPorts, QWidget* parent = nullptr);

    void accept() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void startSearch();
    void search();
    void showPorts(const std::vector<int>& present, const std::vector<NewPortDevice>& fresh);

    LinkState& state_;
    SerialPort& port_;
    Settings& settings_;
    ListPortDevices listDevices_;
    ListNewPorts listNewPorts_;
    std::vector<int> present_;         // in the order of the list
    std::vector<NewPortDevice> fresh_; // behind them
    bool searching_ = false;
    QLabel* heading_;
    FixedWidthList* ports_;
    QPushButton* take_;
    QPushButton* searchAgain_;
};

} // namespace karvo
