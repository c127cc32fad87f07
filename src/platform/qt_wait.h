#pragma once

#include "program/wait.h"

#include <QEventLoop>
#include <QTimer>

namespace karvo
{

// Waits in an event loop that sleeps until something happens. The limit is kept by a timer named "Timer1",
// which outside a wait is stopped and stands at its design interval of 5000 ms.
class QtWait : public QObject, public Wait
{
    Q_OBJECT

public:
    explicit QtWait(QObject* parent = nullptr);

    // Asserts that no wait is under way; where assertions are off, such a call returns `ended` at once.
    WaitResult until(const std::function<bool()>& condition, std::chrono::milliseconds limit) override;

    std::chrono::microseconds now() const override;

    // From any code of the window thread, the condition itself included.
    void wake() override;

    // The program is being closed: the wait under way and all later ones return `ended` at once.
    void endProgram();
    bool ended() const { return ended_; }

private:
    class UnderWay;

    QTimer timer_;
    QEventLoop* loop_ = nullptr; // of the wait under way
    bool wakePosted_ = false;
    bool ended_ = false;
};

} // namespace karvo
