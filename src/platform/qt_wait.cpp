#include "platform/qt_wait.h"

#ifdef __linux__
#include <ctime>
#endif

namespace karvo
{

namespace
{

constexpr std::chrono::milliseconds designInterval{5000};

} // namespace

// However a wait is left, the timer stops and no loop is under way.
class QtWait::UnderWay
{
public:
    UnderWay(QtWait& wait, QEventLoop& loop, std::chrono::milliseconds limit) : wait_(wait)
    {
        wait_.loop_ = &loop;
        wait_.wakePosted_ = false;
        wait_.timer_.start(limit);
    }

    ~UnderWay()
    {
        wait_.timer_.stop();
        wait_.timer_.setInterval(designInterval);
        wait_.loop_ = nullptr;
    }

    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    QtWait& wait_;
};

QtWait::QtWait(QObject* parent) : QObject(parent), timer_(this)
{
    timer_.setObjectName(QStringLiteral("Timer1"));
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer); // a coarse one may strike 5 % early
    timer_.setInterval(designInterval);
    connect(&timer_, &QTimer::timeout, this, [this] { wake(); });
}

WaitResult QtWait::until(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    Q_ASSERT_X(!loop_, "QtWait::until", "a wait inside a wait");
    if (ended_ || loop_)
        return WaitResult::ended;
    QEventLoop loop;
    const UnderWay underWay(*this, loop, limit);
    while (true) {
        const bool met = condition();
        if (ended_)
            return WaitResult::ended;
        if (met)
            return WaitResult::met;
        if (!timer_.isActive())
            return WaitResult::timedOut;
        // -1: the application itself has been told to quit, and no loop will run any more.
        if (loop.exec() == -1)
            ended_ = true;
        wakePosted_ = false;
        if (ended_)
            return WaitResult::ended;
    }
}

std::chrono::microseconds QtWait::now() const
{
    using namespace std::chrono;
#ifdef __linux__
    // Linux stops the clock of `steady_clock` while the computer sleeps.
    timespec sinceStart{};
    if (clock_gettime(CLOCK_BOOTTIME, &sinceStart) == 0)
        return duration_cast<microseconds>(seconds(sinceStart.tv_sec) + nanoseconds(sinceStart.tv_nsec));
#endif
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch());
}

void QtWait::wake()
{
    // Through the event queue: it also reaches a loop that has not started to run yet, and the condition is
    // never tested inside the slot that wakes.
    if (loop_ && !wakePosted_) {
        wakePosted_ = true;
        QMetaObject::invokeMethod(loop_, &QEventLoop::quit, Qt::QueuedConnection);
    }
}

void QtWait::endProgram()
{
    ended_ = true;
    wake();
}

} // namespace karvo
