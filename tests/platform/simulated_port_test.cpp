// The simulator behind a port: its number, the event loop, its pace and hang-ups.
#include "platform/simulated_port.h"

#include "platform/line_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

struct PortBench {
    PortBench(sim::Pace pace, sim::Fault fault) : port({*sim::decoderByName("kv07"), pace, fault}, 1)
    {
        port.open();
    }
    SimulatedPort port;
    test::LineBench line{port};
};

TEST(SimulatedPort, AnswersOnTheChosenNumberOnly)
{
    int chosen = 5;
    SimulatedPort port({*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none},
                       [&chosen] { return chosen; });
    EXPECT_EQ(port.objectName(), QStringLiteral("MSComm1"));
    EXPECT_EQ(port.portNumber(), 5);
    port.setPortNumber(9);
    const auto error = port.open();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->description, u"No such file or directory");
    EXPECT_EQ(error->fault, PortFault::absent);
    EXPECT_FALSE(port.isOpen());
    chosen = 9;
    EXPECT_FALSE(port.open());
    EXPECT_TRUE(port.isOpen());
}

TEST(SimulatedPort, AnswersOnlyThroughTheEventLoop)
{
    PortBench bench(sim::Pace::none, sim::Fault::none);
    bench.port.write({0x25});
    EXPECT_EQ(bench.port.bytesWaiting(), 0U);
    EXPECT_EQ(bench.line.waitForBytes(2), WaitResult::met);
    EXPECT_EQ(bench.line.notices, 1);
    EXPECT_EQ(bench.port.readAll(), (Bytes{'2', '7'}));
    bench.port.simulator().setFault(sim::Fault::unknownIdentification);
    EXPECT_EQ(bench.line.exchange({0x25}, 2), (Bytes{'9', '9'}));
}

TEST(SimulatedPort, ManyExchangesTakeTheLinesTimeAndNotTheTimersRounding)
{
    PortBench bench(sim::Pace::line, sim::Fault::none);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(bench.line.exchange({0x45, 0x57, 0x53}, 1), Bytes{6});
        EXPECT_EQ(bench.line.exchange({0x2F, 0x05, 0x34}, 1), Bytes{6});
        EXPECT_EQ(bench.line.exchange({0x25}, 2), (Bytes{'2', '7'}));
    }
    EXPECT_GE(clock.elapsed(), 228); // 110 bytes at 4800 baud take 229.2 ms
    EXPECT_LT(clock.elapsed(), 400);
    EXPECT_GT(bench.line.notices, 33) << "replies come in byte by byte";
}

TEST(SimulatedPort, SilenceEndsInTheTimeOutAndCostsNoProcessorTime)
{
    PortBench bench(sim::Pace::line, sim::Fault::silence);
    const double before = test::processorTime();
    bench.port.write({0x25});
    EXPECT_EQ(bench.line.wait.until([&] { return bench.port.bytesWaiting() > 0; }, 100ms),
              WaitResult::timedOut);
    EXPECT_LT(test::processorTime() - before, 20.0);
    EXPECT_EQ(bench.line.notices, 0);
}

TEST(SimulatedPort, AHangUpEndsTheWaitAndTheNextOpeningWorks)
{
    PortBench bench(sim::Pace::none, sim::Fault::hangUp);
    EXPECT_EQ(bench.line.exchange({0x45, 0x52}, 1025), Bytes{});
    EXPECT_FALSE(bench.port.isOpen());
    EXPECT_EQ(bench.line.notices, 1);
    EXPECT_EQ(bench.line.exchange({0x25}, 2), Bytes{}) << "a closed port loses what is written";
    EXPECT_FALSE(bench.port.open());
    EXPECT_EQ(bench.line.exchange({0x45, 0x52}, 1025).size(), 1025U);
}

TEST(SimulatedPort, ClosingLosesWhatWasOnItsWay)
{
    PortBench bench(sim::Pace::line, sim::Fault::none);
    bench.port.write({0x45, 0x52});
    EXPECT_EQ(bench.line.waitForBytes(3), WaitResult::met);
    bench.port.close();
    EXPECT_EQ(bench.port.bytesWaiting(), 0U);
    bench.port.open();
    EXPECT_EQ(bench.line.exchange({0x25}, 2), (Bytes{'2', '7'}));
}

} // namespace
} // namespace karvo
