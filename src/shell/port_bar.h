// The row below the menu: the port, the full read, and which decoder has been read.
#pragma once

#include "link/forms/port_devices.h"
#include "workbench/workbench.h"

#include <QTimer>
#include <QWidget>

#include <optional>

class QLabel;
class QPushButton;

namespace karvo
{

class PortList;

class PortBar : public QWidget
{
    Q_OBJECT

public:
    PortBar(const LanguageTables& texts, ListPortDevices listDevices, QWidget* parent = nullptr);

    void applyCaptions(const LanguageTables& texts);
    void showPort(int number);
    void showDecoder(const ProgramState& state);
    void setLineBusy(bool busy);
    void focusStart();

    // The button for the servos' addresses; `reason`: why its window does not open.
    void setServoAddresses(bool available, const std::optional<Text>& reason);

protected:
    bool event(QEvent* event) override;

signals:
    void portChosen(int number);
    void readWanted();
    void servoAddressesWanted();

private:
    QWidget* portGroup();
    QWidget* addressGroup();
    void updateNote();

    QLabel* portLabel_;
    const LanguageTables& texts_;
    PortList* ports_;
    QLabel* note_; // that nothing is plugged in at the port
    QTimer noteTimer_;
    QPushButton* start_;
    QLabel* identification_;
    QLabel* address_;
    QLabel* firstLabel_;
    QLabel* first_;
    QLabel* secondLabel_;
    QLabel* second_;
    QPushButton* servoAddress_;
};

} // namespace karvo
