// Ctrl-C as a notice in the event loop, so that what is under way can come to a clean stop.
#pragma once

#include <QObject>

#include <functional>

namespace karvo
{

// From listen() on, Ctrl-C (elsewhere than on Windows a request to end, and a terminal that is closed, too)
// calls `interrupted` from the event loop instead of ending the program. One object at a time listens.
class InterruptNotice : public QObject
{
    Q_OBJECT

public:
    InterruptNotice() = default;
    ~InterruptNotice() override;

    // Again: with another function from now on.
    void listen(std::function<void()> interrupted);

    // How often that has happened since listen(), told or not told yet.
    int times() const;

    Q_INVOKABLE void tell() { interrupted_(); }

private:
    void begin();
    void end();

    std::function<void()> interrupted_; // empty: not listening
};

} // namespace karvo
