// A port and its wait on the simulator, with a clock that jumps from event to event.
#pragma once

#include "simulator/simulator.h"
#include "support/scripted_seams.h"

namespace karvo::test
{

class SimulatedLine : public LineDouble
{
public:
    explicit SimulatedLine(sim::Simulator simulator) : simulator_(std::move(simulator)) {}

    const sim::Simulator& simulator() const { return simulator_; }
    void setFault(sim::Fault fault) { simulator_.setFault(fault); }
    // The adapter is pulled with the n-th write from now on (from 1), which is lost.
    void pullWithWrite(int n) { writesBeforePull_ = n; }
    // The same, at a moment of its own: while something is awaited, or a pause is made.
    void pullAt(sim::Time moment) { pullAt_ = moment; }

    void setSettings(const LineSettings& settings) override { settings_ = settings; }
    std::optional<PortError> open() override
    {
        if (!std::exchange(open_, true)) {
            simulator_.setBaud(settings_.baud);
            simulator_.reconnect();
        }
        return std::nullopt;
    }
    void close() override { open_ = false; }
    void write(const Bytes& bytes) override
    {
        if (writesBeforePull_ > 0 && --writesBeforePull_ == 0)
            open_ = false;
        if (open_)
            simulator_.receive(bytes, now_);
    }
    WaitResult until(const std::function<bool()>& condition, std::chrono::milliseconds limit) override
    {
        const sim::Time deadline = now_ + limit;
        for (take(); !condition(); take()) {
            const auto next = nextEvent();
            if (!next || *next > deadline) {
                now_ = deadline;
                return WaitResult::timedOut;
            }
            now_ = std::max(now_, *next);
        }
        return WaitResult::met;
    }

private:
    std::optional<sim::Time> nextEvent() const
    {
        const auto next = open_ ? simulator_.nextEvent() : std::nullopt;
        return open_ && pullAt_ && (!next || *next > *pullAt_) ? pullAt_ : next;
    }
    void take()
    {
        if (pullAt_ && *pullAt_ <= now_) {
            open_ = false;
            pullAt_.reset();
        }
        if (!open_)
            return;
        addWaitingBytes(simulator_.take(now_));
        open_ = !simulator_.hungUp(now_);
    }

    sim::Simulator simulator_;
    LineSettings settings_;
    int writesBeforePull_ = 0;
    std::optional<sim::Time> pullAt_;
};

} // namespace karvo::test
