#include "platform/simulated_port.h"

#include "platform/text_conversion.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace karvo
{

namespace
{

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
        return PortError{missingDeviceText(), {}};
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
    simulator_.receive(bytes, now());
    schedule();
}

sim::Time SimulatedPort::now() const
{
    return sim::Time(clock_.nsecsElapsed() / 1000);
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
    const Bytes bytes = simulator_.take(moment);
    received_.insert(received_.end(), bytes.begin(), bytes.end());
    const bool hungUp = simulator_.hungUp(moment);
    if (hungUp)
        close();
    else
        schedule();
    if (notice_ && (hungUp || !bytes.empty()))
        notice_();
}

} // namespace karvo
