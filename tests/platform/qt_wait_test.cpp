#include "platform/qt_wait.h"

#include "platform/line_bench.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;
using test::processorTime;

bool never()
{
    return false;
}

QTimer& timer1(QtWait& wait)
{
    return *wait.findChild<QTimer*>(QStringLiteral("Timer1"));
}

TEST(QtWait, AConditionThatHoldsEndsTheWaitAtOnce)
{
    QtWait wait;
    bool eventRan = false;
    QTimer::singleShot(0ms, &wait, [&] { eventRan = true; });
    EXPECT_EQ(wait.until([] { return true; }, 5s), WaitResult::met);
    EXPECT_FALSE(eventRan);
}

TEST(QtWait, LetsEventsRunUntilTheLimit)
{
    QtWait wait;
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &wait, [&] { ++ticks; });
    ticker.start(10ms);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(wait.until(never, 100ms), WaitResult::timedOut);
    EXPECT_GE(clock.elapsed(), 99);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_GE(ticks, 2);
}

TEST(QtWait, TestsTheConditionOnlyWhenWokenOrAtTheLimit)
{
    QtWait wait;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &wait, [] {});
    ticker.start(1ms);
    int tests = 0;
    const auto condition = [&] {
        ++tests;
        return false;
    };
    QTimer::singleShot(20ms, &wait, [&] { wait.wake(); });
    EXPECT_EQ(wait.until(condition, 60ms), WaitResult::timedOut);
    EXPECT_EQ(tests, 3) << "at once, woken, at the limit";
}

TEST(QtWait, AWakeEndsTheWaitLongBeforeTheLimit)
{
    QtWait wait;
    bool arrived = false;
    QTimer::singleShot(20ms, &wait, [&] {
        arrived = true;
        wait.wake();
        wait.wake();
    });
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(wait.until([&] { return arrived; }, 5s), WaitResult::met);
    EXPECT_LT(clock.elapsed(), 1000);
}

TEST(QtWait, MayBeWokenFromInsideTheCondition)
{
    QtWait wait;
    int tests = 0;
    const auto condition = [&] {
        wait.wake();
        return ++tests == 3;
    };
    EXPECT_EQ(wait.until(condition, 5s), WaitResult::met);
    EXPECT_EQ(wait.until(
                  [&] {
                      wait.wake();
                      return false;
                  },
                  50ms),
              WaitResult::timedOut)
        << "a condition that wakes without end holds no events up";
}

TEST(QtWait, AWakeWithoutAWaitLeavesNothingBehind)
{
    QtWait wait;
    wait.wake();
    int tests = 0;
    EXPECT_EQ(wait.until(
                  [&] {
                      ++tests;
                      return false;
                  },
                  30ms),
              WaitResult::timedOut);
    EXPECT_EQ(tests, 2);
}

TEST(QtWait, CostsNoProcessorTime)
{
    QtWait wait;
    const double before = processorTime();
    EXPECT_EQ(wait.pause(1000ms), WaitResult::met);
    EXPECT_LT(processorTime() - before, 10.0);
}

TEST(QtWait, TimerStandsAtItsDesignIntervalOutsideAWait)
{
    QtWait wait;
    EXPECT_EQ(timer1(wait).interval(), 5000);
    EXPECT_FALSE(timer1(wait).isActive());
    QTimer::singleShot(0ms, &wait, [&] {
        EXPECT_TRUE(timer1(wait).isActive());
        EXPECT_EQ(timer1(wait).interval(), 10000);
        wait.wake();
    });
    int tests = 0;
    EXPECT_EQ(wait.until([&] { return ++tests == 2; }, 10s), WaitResult::met);
    EXPECT_EQ(timer1(wait).interval(), 5000);
    EXPECT_FALSE(timer1(wait).isActive());
}

TEST(QtWait, EndOfTheProgramEndsThisWaitAndAllLaterOnes)
{
    QtWait wait;
    EXPECT_FALSE(wait.ended());
    QTimer::singleShot(10ms, &wait, [&] { wait.endProgram(); });
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(wait.until(never, 5s), WaitResult::ended);
    EXPECT_EQ(wait.until([] { return true; }, 5s), WaitResult::ended);
    EXPECT_EQ(wait.pause(5s), WaitResult::ended);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_TRUE(wait.ended());
}

TEST(QtWait, EndOfTheProgramFromInsideTheConditionCountsBeforeIt)
{
    QtWait wait;
    const auto condition = [&] {
        wait.endProgram();
        return true;
    };
    EXPECT_EQ(wait.until(condition, 5s), WaitResult::ended);
}

// In a process of its own: no loop runs any more in an application that was told to quit.
TEST(QtWaitDeathTest, QuittingTheApplicationEndsTheWait)
{
    const auto endsAtOnce = [] {
        QtWait wait;
        QTimer::singleShot(10ms, &wait, [] { QCoreApplication::exit(0); });
        return wait.until(never, 5s) == WaitResult::ended && wait.ended();
    };
    EXPECT_EXIT(std::exit(endsAtOnce() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(QtWaitDeathTest, NestsNowhere)
{
    QtWait wait;
    auto inner = WaitResult::met;
    const auto condition = [&] {
        inner = wait.until(never, 10ms);
        return true;
    };
#ifdef QT_NO_DEBUG
    EXPECT_EQ(wait.until(condition, 5s), WaitResult::met);
    EXPECT_EQ(inner, WaitResult::ended);
#else
    EXPECT_DEATH(wait.until(condition, 5s), "a wait inside a wait");
#endif
}

} // namespace

} // namespace karvo
