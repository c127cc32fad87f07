// A port and its wait on the simulator, with a clock that jumps from event to event.
#pragma once

#include "program/serial_port.h"
#include "program/wait.h"
#include "simulator/simulator.h"

namespace karvo::test
{

class SimulatedLine : public SerialPort, public Wait
{
public:
    explicit SimulatedLine(sim::Simulator simulator) : simulator_(std::move(simulator)) {}

    const sim::Simulator& simulator() const { return simulator_; }
    sim::Time now() const override { return now_; }

    void setFault(sim::Fault fault) { simulator_.setFault(fault); }
    // The adapter is pulled with the n-th write from now on (from 1), which is lost.
    void pullWithWrite(int n) { writesBeforePull_ = n; }
    // The same, at a moment of its own: while something is awaited, or a pause is made.
    void pullAt(sim::Time moment) { pullAt_ = moment; }

    void setPortNumber(int number) override { number_ = number; }
    int portNumber() const override { return number_; }
    void setSettings(const LineSettings& settings) override { settings_ = settings; }
    std::optional<PortError> open() override
    {
        if (!open_) {
            simulator_.setBaud(settings_.baud);
            simulator_.reconnect();
        }
        open_ = true;
        return std::nullopt;
    }
    void close() override { open_ = false; }
    bool isOpen() const override { return open_; }
    std::size_t bytesWaiting() const override { return received_.size(); }
    Bytes readAll() override { return std::exchange(received_, Bytes()); }
    void write(const Bytes& bytes) override
    {
        if (writesBeforePull_ > 0 && --writesBeforePull_ == 0)
            open_ = false;
        if (open_)
            simulator_.receive(bytes, now_);
    }
    void setNotice(std::function<void()>) override {}

    WaitResult until(const std::function<bool()>& condition, std::chrono::milliseconds limit) override
    {
        const sim::Time deadline = now_ + limit;
        take();
        while (!condition()) {
            const auto next = nextEvent();
            if (!next || *next > deadline) {
                now_ = deadline;
                return WaitResult::timedOut;
            }
            now_ = std::max(now_, *next);
            take();
        }
        return WaitResult::met;
    }
    void wake() override {}

private:
    std::optional<sim::Time> nextEvent() const
    {
        if (!open_)
            return std::nullopt;
        const auto next = simulator_.nextEvent();
        return pullAt_ && (!next || *next > *pullAt_) ? pullAt_ : next;
    }
    void take()
    {
        if (pullAt_ && *pullAt_ <= now_) {
            open_ = false;
            pullAt_.reset();
        }
        if (!open_)
            return;
        const Bytes bytes = simulator_.take(now_);
        received_.insert(received_.end(), bytes.begin(), bytes.end());
        open_ = !simulator_.hungUp(now_);
    }

    sim::Simulator simulator_;
    sim::Time now_{};
    Bytes received_;
    LineSettings settings_;
    int number_ = 1;
    bool open_ = false;
    int writesBeforePull_ = 0;
    std::optional<sim::Time> pullAt_;
};

} // namespace karvo::test
