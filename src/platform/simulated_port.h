// The simulated programming interface as a port of this program: for trying things out without any hardware.
#pragma once

#include "program/serial_port.h"
#include "simulator/simulator.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

namespace karvo
{

class SimulatedPort : public QObject, public SerialPort
{
    Q_OBJECT

public:
    // The interface is plugged in at the port that `answeringNumber` gives when the port is opened; to open
    // any other port fails as with a missing device.
    SimulatedPort(sim::Simulator simulator, std::function<int()> answeringNumber, QObject* parent = nullptr);

    // At one port for good.
    SimulatedPort(sim::Simulator simulator, int number, QObject* parent = nullptr);

    void setPortNumber(int number) override { number_ = number; }
    int portNumber() const override { return number_; }
    void setSettings(const LineSettings& settings) override { settings_ = settings; }

    // After a hang-up the adapter counts as plugged in again.
    std::optional<PortError> open() override;
    void close() override;
    bool isOpen() const override { return open_; }

    std::size_t bytesWaiting() const override { return received_.size(); }
    Bytes readAll() override;
    void write(const Bytes& bytes) override;
    void setNotice(std::function<void()> notice) override { notice_ = std::move(notice); }

    // For scripts that change the fault between two exchanges.
    sim::Simulator& simulator() { return simulator_; }

private:
    sim::Time now() const;
    sim::Time startOfWrite() const;
    void schedule();
    void deliver();

    sim::Simulator simulator_;
    const std::function<int()> answeringNumber_;
    int number_;
    LineSettings settings_;
    bool open_ = false;
    Bytes received_;
    QElapsedTimer clock_;
    sim::Time timerLag_{}; // how late the timer has struck for the last byte, as far as its resolution goes
    QTimer timer_;
    std::function<void()> notice_;
};

} // namespace karvo
