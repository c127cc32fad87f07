#include "platform/qt_wait.h"

#include "platform/line_bench.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

bool never()
{
    return false;
}

TEST(QtWait, AConditionThatHoldsEndsTheWaitBeforeAnyEvent)
{
    QtWait wait;
    QTimer::singleShot(0ms, &wait, [] { ADD_FAILURE(); });
    EXPECT_EQ(wait.until([] { return true; }, 5s), WaitResult::met);
}

// Events run meanwhile, of which only a wake sets off another look.
TEST(QtWait, TestsTheConditionAtOnceWhenWokenAndAtTheLimit)
{
    QtWait wait;
    wait.wake(); // without a wait it leaves nothing behind
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &wait, [&] { ++ticks; });
    ticker.start(1ms);
    for (const auto& [last, limit, end] :
         {std::tuple{2, 5000ms, WaitResult::met}, {4, 60ms, WaitResult::timedOut}}) {
        QTimer::singleShot(10ms, &wait, [&] {
            wait.wake();
            wait.wake();
        });
        int tests = 0;
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(wait.until([&] { return ++tests == last; }, limit), end);
        EXPECT_EQ(tests, end == WaitResult::met ? 2 : 3);
        EXPECT_GE(clock.elapsed(), end == WaitResult::met ? 9 : 59);
        EXPECT_LT(clock.elapsed(), 1000);
    }
    EXPECT_GE(ticks, 2);
}

TEST(QtWait, MayBeWokenFromInsideTheConditionWithoutHoldingEventsUp)
{
    QtWait wait;
    int tests = 0;
    const auto wakesUntil = [&](int last) {
        return [&wait, &tests, last] {
            wait.wake();
            return ++tests == last;
        };
    };
    EXPECT_EQ(wait.until(wakesUntil(3), 5s), WaitResult::met);
    EXPECT_EQ(wait.until(wakesUntil(-1), 50ms), WaitResult::timedOut);
}

TEST(QtWait, CostsNoProcessorTime)
{
    QtWait wait;
    const double before = test::processorTime();
    EXPECT_EQ(wait.pause(200ms), WaitResult::met);
    EXPECT_LT(test::processorTime() - before, 10.0);
}

TEST(QtWait, TimerStandsAtItsDesignIntervalOutsideAWait)
{
    QtWait wait;
    const QTimer& timer = *wait.findChild<QTimer*>(QStringLiteral("Timer1"));
    EXPECT_EQ(timer.interval(), 5000);
    QTimer::singleShot(0ms, &wait, [&] {
        EXPECT_TRUE(timer.isActive());
        EXPECT_EQ(timer.interval(), 10000);
        wait.wake();
    });
    int tests = 0;
    EXPECT_EQ(wait.until([&] { return ++tests == 2; }, 10s), WaitResult::met);
    EXPECT_EQ(timer.interval(), 5000);
    EXPECT_FALSE(timer.isActive());
}

TEST(QtWait, TheEndOfTheProgramEndsThisWaitAndAllLaterOnesWhateverHolds)
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
    QtWait another;
    const auto ends = [&] {
        another.endProgram();
        return true;
    };
    EXPECT_EQ(another.until(ends, 5s), WaitResult::ended);
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
