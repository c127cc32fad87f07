// The drop-down list of the ports COM1 to COM31.
#pragma once

#include "link/forms/port_devices.h"

#include <QComboBox>

namespace karvo
{

class PortList : public QComboBox
{
    Q_OBJECT

public:
    // Tool tips tell the devices; they are looked up when one is about to be shown.
    PortList(const LanguageTables& texts, ListPortDevices listDevices, QWidget* parent);

    // Without a signal.
    void showPort(int number);

    // Whether nothing is plugged in at the chosen port, as far as is known.
    bool isAbsent() const;

signals:
    // The person has chosen a port, perhaps the same again.
    void portChosen(int number);

protected:
    bool event(QEvent* event) override;
    void showPopup() override;
    void wheelEvent(QWheelEvent* event) override; // does nothing: a turn of the wheel is no choice

private:
    void updateTips();

    const LanguageTables& texts_;
    ListPortDevices listDevices_;
};

} // namespace karvo
