#include "platform/simulated_port.h"

#include "platform/line_bench.h"

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;
using test::LineBench;

sim::Simulator simulator(std::string_view model, sim::Pace pace, sim::Fault fault)
{
    return {sim::decoderByName(model).value(), pace, fault};
}

TEST(SimulatedPort, FollowsTheChosenNumber)
{
    int chosen = 5;
    SimulatedPort port(simulator("kv07", sim::Pace::none, sim::Fault::none), [&chosen] { return chosen; });
    EXPECT_EQ(port.portNumber(), 5);
    port.setPortNumber(9);
    EXPECT_TRUE(port.open());
    chosen = 9;
    EXPECT_FALSE(port.open());
    EXPECT_TRUE(port.isOpen());
}

TEST(SimulatedPort, AnswersOnItsNumberOnly)
{
    SimulatedPort port(simulator("kv07", sim::Pace::none, sim::Fault::none), 5);
    EXPECT_EQ(port.objectName(), QStringLiteral("MSComm1"));
    port.setPortNumber(4);
    const auto error = port.open();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->description, Text(u"No such file or directory"));
    EXPECT_EQ(error->accessGroup, Text());
    EXPECT_FALSE(port.isOpen());

    port.setPortNumber(5);
    EXPECT_FALSE(port.open());
    EXPECT_TRUE(port.isOpen());
    LineBench bench(port);
    EXPECT_EQ(bench.exchange({0x25}, 2), (Bytes{'2', '7'}));
}

TEST(SimulatedPort, AnswersOnlyThroughTheEventLoop)
{
    SimulatedPort port(simulator("kv07", sim::Pace::none, sim::Fault::none), 1);
    port.open();
    LineBench bench(port);
    port.write({0x25});
    EXPECT_EQ(port.bytesWaiting(), 0U);
    EXPECT_EQ(bench.waitForBytes(2), WaitResult::met);
    EXPECT_EQ(bench.notices, 1);
    EXPECT_EQ(port.bytesWaiting(), 2U);
}

TEST(SimulatedPort, KeepsThePaceOfTheLine)
{
    SimulatedPort port(simulator("kv04", sim::Pace::line, sim::Fault::none), 1);
    port.open();
    LineBench bench(port);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(bench.exchange({0x45, 0x52}, 513).size(), 513U);
    EXPECT_GE(clock.elapsed(), 1072); // 515 bytes at 4800 baud take 1072.9 ms
    EXPECT_LT(clock.elapsed(), 1500);
    EXPECT_GT(bench.notices, 100) << "the block comes in byte by byte";
}

TEST(SimulatedPort, ManyExchangesTakeTheLinesTimeAndNotTheTimersRounding)
{
    SimulatedPort port(simulator("kv07", sim::Pace::line, sim::Fault::none), 1);
    port.open();
    LineBench bench(port);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(bench.exchange({0x45, 0x57, 0x53}, 1), Bytes{6});
        EXPECT_EQ(bench.exchange({0x2F, 0x05, 0x34}, 1), Bytes{6});
    }
    EXPECT_GE(clock.elapsed(), 332); // 160 bytes at 4800 baud take 333.3 ms
    EXPECT_LT(clock.elapsed(), 500);
}

TEST(SimulatedPort, SilenceEndsInTheTimeOutAndCostsNoProcessorTime)
{
    SimulatedPort port(simulator("kv07", sim::Pace::line, sim::Fault::silence), 1);
    port.open();
    LineBench bench(port);
    const double before = test::processorTime();
    port.write({0x25});
    EXPECT_EQ(bench.wait.until([&] { return port.bytesWaiting() > 0; }, 300ms), WaitResult::timedOut);
    EXPECT_LT(test::processorTime() - before, 20.0);
    EXPECT_EQ(bench.notices, 0);
}

TEST(SimulatedPort, HangUpEndsTheWaitAndTheNextOpeningWorks)
{
    SimulatedPort port(simulator("kv04", sim::Pace::none, sim::Fault::hangUp), 1);
    port.open();
    LineBench bench(port);
    EXPECT_EQ(bench.exchange({0x45, 0x52}, 513), Bytes{});
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(bench.notices, 1);
    EXPECT_EQ(bench.exchange({0x25}, 2), Bytes{}) << "a closed port loses what is written";

    EXPECT_FALSE(port.open());
    EXPECT_EQ(bench.exchange({0x45, 0x52}, 513).size(), 513U);
}

TEST(SimulatedPort, ClosingLosesWhatWasOnItsWay)
{
    SimulatedPort port(simulator("kv07", sim::Pace::line, sim::Fault::none), 1);
    port.open();
    LineBench bench(port);
    port.write({0x45, 0x52});
    EXPECT_EQ(bench.waitForBytes(3), WaitResult::met);
    port.close();
    EXPECT_EQ(port.bytesWaiting(), 0U);
    port.open();
    EXPECT_EQ(bench.exchange({0x25}, 2), (Bytes{'2', '7'}));
}

TEST(SimulatedPort, AScriptMayChangeTheFault)
{
    SimulatedPort port(simulator("kv07", sim::Pace::none, sim::Fault::none), 1);
    port.open();
    LineBench bench(port);
    port.simulator().setFault(sim::Fault::unknownIdentification);
    EXPECT_EQ(bench.exchange({0x25}, 2), (Bytes{'9', '9'}));
}

} // namespace

} // namespace karvo
