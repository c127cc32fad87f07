#include "platform/simulated_port.h"

#include "platform/text_conversion.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace karvo
{

namespace
{

constexpr sim::Time timerResolution = std::chrono::milliseconds{1};

Text missingDeviceText()
{
    const auto text = std::generic_category().message(static_cast<int>(std::errc::no_such_file_or_directory));
    return toText(QString::fromLocal8Bit(text.c_str()));
}

} // namespace

SimulatedPort::SimulatedPort(sim::Simulator simulator, int number, QObject* parent)
    : SimulatedPort(
          std::move(simulator), [number] { return number; }, parent)
{
}

SimulatedPort::SimulatedPort(sim::Simulator simulator, std::function<int()> answeringNumber, QObject* parent)
    : QObject(parent),
      simulator_(std::move(simulator)),
      answeringNumber_(std::move(answeringNumber)),
      number_(answeringNumber_()),
      timer_(this)
{
    setObjectName(QStringLiteral("MSComm1"));
    clock_.start();
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &SimulatedPort::deliver);
}

std::optional<PortError> SimulatedPort::open()
{
    if (open_)
        return std::nullopt;
    if (number_ != answeringNumber_())
        return PortError{missingDeviceText(), {}, PortFault::absent};
    simulator_.setBaud(settings_.baud);
    simulator_.reconnect();
    received_.clear();
    open_ = true;
    return std::nullopt;
}

void SimulatedPort::close()
{
    open_ = false;
    timer_.stop();
    received_.clear();
}

Bytes SimulatedPort::readAll()
{
    return std::exchange(received_, {});
}

void SimulatedPort::write(const Bytes& bytes)
{
    if (!open_)
        return;
    simulator_.receive(bytes, startOfWrite());
    schedule();
}

sim::Time SimulatedPort::now() const
{
    return sim::Time(clock_.nsecsElapsed() / 1000);
}

// A real line would have handed the last byte over when it was complete, and not at the next millisecond; so
// the command that answers it starts that much earlier. Else each exchange would cost the timer's rounding.
sim::Time SimulatedPort::startOfWrite() const
{
    return now() - timerLag_;
}

void SimulatedPort::schedule()
{
    if (const auto event = simulator_.nextEvent()) {
        const auto pause = std::max(*event - now(), sim::Time::zero());
        timer_.start(std::chrono::ceil<std::chrono::milliseconds>(pause));
    }
}

void SimulatedPort::deliver()
{
    const auto moment = now();
    const auto waiting = received_.size();
    for (auto due = simulator_.nextEvent(); due && *due <= moment && !simulator_.hungUp(*due);
         due = simulator_.nextEvent()) {
        const Bytes bytes = simulator_.take(*due);
        received_.insert(received_.end(), bytes.begin(), bytes.end());
        timerLag_ = std::min(moment - *due, timerResolution);
    }
    const bool anyCame = received_.size() > waiting;
    const bool hungUp = simulator_.hungUp(moment);
    if (hungUp)
        close();
    else
        schedule();
    if (notice_ && (hungUp || anyCame))
        notice_();
}

} // namespace karvo
