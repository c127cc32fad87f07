// The ports with a wait, as the program puts them together: the simulator behind a port, and the real serial
// class over pseudo terminals, one whose other end the test holds, and that of karvo-sim.
#include "platform/qt_serial_port.h"
#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "platform/text_conversion.h"
#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <ctime>
#include <numeric>

#ifdef Q_OS_UNIX
#include "cli/pseudo_terminal.h"

#include <QProcess>
#endif

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

struct LineBench {
    explicit LineBench(SerialPort& itsPort) : port(itsPort)
    {
        port.setNotice([this] {
            ++notices;
            wait.wake();
        });
    }
    WaitResult waitForBytes(std::size_t count, std::chrono::milliseconds limit = 5s)
    {
        return wait.until([&] { return port.bytesWaiting() >= count || !port.isOpen(); }, limit);
    }
    // What answers within `count` bytes or the time-out.
    Bytes exchange(const Bytes& command, std::size_t count)
    {
        port.write(command);
        waitForBytes(count);
        return port.readAll();
    }

    SerialPort& port;
    QtWait wait;
    int notices = 0;
};

TEST(SimulatedPort, AnswersOnTheChosenNumberOnlyAndComesBackAfterAHangUp)
{
    int chosen = 5;
    SimulatedPort port({*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::hangUp},
                       [&chosen] { return chosen; });
    LineBench bench(port);
    port.setPortNumber(9);
    const auto error = port.open();
    EXPECT_TRUE(error && error->description == u"No such file or directory" &&
                error->fault == PortFault::absent);
    chosen = 9;
    EXPECT_FALSE(port.open());
    EXPECT_EQ(bench.exchange({0x45, 0x52}, 1025), Bytes{});
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(bench.notices, 1);
    EXPECT_EQ(bench.exchange({0x25}, 2), Bytes{}) << "a closed port loses what is written";
    EXPECT_FALSE(port.open());
    port.write({0x45, 0x52});
    EXPECT_EQ(port.bytesWaiting(), 0U) << "answers only through the event loop";
    EXPECT_EQ(bench.waitForBytes(1025), WaitResult::met);
}

TEST(SimulatedPort, ManyExchangesTakeTheLinesTimeAndNotTheTimersRounding)
{
    SimulatedPort port({*sim::decoderByName("kv07"), sim::Pace::line, sim::Fault::none}, 1);
    LineBench bench(port);
    port.open();
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(bench.exchange({0x45, 0x57, 0x53}, 1), Bytes{6});
        EXPECT_EQ(bench.exchange({0x2F, 0x05, 0x34}, 1), Bytes{6});
        EXPECT_EQ(bench.exchange({0x25}, 2), (Bytes{'2', '7'}));
    }
    EXPECT_GE(clock.elapsed(), 228); // 110 bytes at 4800 baud take 229.2 ms
    EXPECT_LT(clock.elapsed(), 400);
    EXPECT_GT(bench.notices, 33) << "replies come in byte by byte";
    port.write({0x45, 0x52});
    EXPECT_EQ(bench.waitForBytes(3), WaitResult::met);
    port.close();
    port.open();
    EXPECT_EQ(bench.exchange({0x25}, 2), (Bytes{'2', '7'})) << "what was on its way is lost";
    port.simulator().setFault(sim::Fault::silence);
    const auto before = std::clock();
    port.write({0x25});
    EXPECT_EQ(bench.waitForBytes(1, 100ms), WaitResult::timedOut);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 50) << "silence costs none";
}

#ifdef Q_OS_UNIX
struct SerialBench : testing::Test {
    SerialBench() { port_.setPortNumber(5); }
    void plugIn(const Text& device) { settings_.save("Ports", "COM5", device); }

    test::MemorySettings settings_;
    PortMap map_{settings_};
    QtSerialPort port_{map_};
    LineBench bench_{port_};
};

struct QtSerialPortTest : SerialBench {
    QtSerialPortTest() { plugIn(); }

    // A new device, as after plugging an adapter in.
    void plugIn()
    {
        device_.emplace();
        SerialBench::plugIn(textFromUtf8(device_->path()));
    }
    void pullOut() { device_.reset(); }

    // The other end sends, after some time in which events run.
    void sendLater(std::chrono::milliseconds delay, const Bytes& bytes)
    {
        QTimer::singleShot(delay, &port_, [this, bytes] { device_->write(bytes); });
    }

    std::optional<PseudoTerminal> device_;
};

TEST_F(QtSerialPortTest, OpensWithItsSettingsWithoutOldBytesClosesAndOpensAgain)
{
    port_.setSettings({14400, Parity::odd, 2});
    for (int round = 0; round < 2; ++round) {
        device_->write(Bytes{7, 8, 9});
        bench_.wait.pause(20ms);
        ASSERT_FALSE(port_.open());
        EXPECT_FALSE(port_.open()) << "opening an open port does nothing";
        bench_.wait.pause(30ms);
        EXPECT_EQ(port_.bytesWaiting(), 0U);
        const auto* device = port_.findChildren<QSerialPort*>().last();
        EXPECT_EQ(device->baudRate(), 14400);
        EXPECT_EQ(device->parity(), QSerialPort::OddParity);
        EXPECT_EQ(device->stopBits(), QSerialPort::TwoStop);
        sendLater(0ms, {1, 2});
        EXPECT_EQ(bench_.waitForBytes(2), WaitResult::met);
        port_.close();
        EXPECT_EQ(port_.bytesWaiting(), 0U);
    }
    ASSERT_FALSE(port_.open());
    port_.setNotice([this] {
        port_.close();
        bench_.wait.wake();
    });
    sendLater(10ms, {1, 2, 3});
    EXPECT_EQ(bench_.waitForBytes(513), WaitResult::met) << "closed in its own notice";
    EXPECT_FALSE(port_.open());
}

TEST_F(QtSerialPortTest, AllByteValuesLeaveAndArriveUnchangedAndInPieces)
{
    Bytes values(256);
    std::iota(values.begin(), values.end(), std::uint8_t{0});
    ASSERT_FALSE(port_.open());
    port_.write(values);
    EXPECT_EQ(device_->read(), values);
    sendLater(0ms, values);
    sendLater(20ms, values);
    EXPECT_EQ(bench_.waitForBytes(512), WaitResult::met);
    Bytes twice = values;
    twice.insert(twice.end(), values.begin(), values.end());
    EXPECT_EQ(port_.readAll(), twice);
}

TEST_F(QtSerialPortTest, AHangUpEndsTheWaitIsToldOnceAndItOpensAnew)
{
    ASSERT_FALSE(port_.open());
    auto* const device = port_.findChild<QSerialPort*>();
    EXPECT_FALSE(device->setDataTerminalReady(true));
    bench_.wait.pause(10ms);
    EXPECT_TRUE(port_.isOpen()) << "what a device can not do is no hang-up";

    QTimer::singleShot(20ms, &port_, [this] { pullOut(); });
    EXPECT_EQ(bench_.waitForBytes(513), WaitResult::met);
    EXPECT_FALSE(port_.isOpen());
    const auto before = std::clock();
    bench_.wait.pause(200ms);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 40) << "errors must not flood the event loop";
    EXPECT_EQ(bench_.notices, 1);
    port_.write({0x25});
    EXPECT_EQ(port_.readAll(), Bytes{});
    ASSERT_TRUE(port_.open()) << "not plugged in again yet";

    plugIn();
    ASSERT_FALSE(port_.open());
    pullOut();
    port_.write({0x25});
    bench_.wait.pause(50ms);
    EXPECT_FALSE(port_.isOpen()) << "pulled between two exchanges";
    EXPECT_EQ(bench_.notices, 2);
}

TEST_F(QtSerialPortTest, ARefusalTellsTheDeviceAndWhy)
{
    ASSERT_FALSE(port_.open());
    QtSerialPort second(map_);
    second.setPortNumber(5);
    const std::tuple<Text, PortFault> refused[] = {{textFromUtf8(device_->path()), PortFault::busy},
                                                   {u"/dev/no-such-device", PortFault::absent},
                                                   {u"/dev/null", PortFault::notSerial},
                                                   {u"/etc", PortFault::notSerial}};
    for (const auto& [device, fault] : refused) {
        SerialBench::plugIn(device);
        const auto error = second.open();
        ASSERT_TRUE(error) << utf8FromText(device);
        EXPECT_EQ(error->fault, fault) << utf8FromText(device);
        EXPECT_EQ(error->device, device);
        EXPECT_FALSE(error->description.empty());
        EXPECT_FALSE(second.isOpen());
    }
    const std::tuple<DeviceAccess, Text, PortFault> groups[] = {
        {{true, QStringLiteral("dialout")}, u"dialout", PortFault::denied},
        {{true, QStringLiteral("root")}, u"", PortFault::denied},
        {{false, QStringLiteral("dialout")}, u"", PortFault::busy},
    };
    for (const auto& [access, group, fault] : groups) {
        const auto error = portError({QSerialPort::PermissionError, QStringLiteral("no"), QString()}, access);
        EXPECT_EQ(error.description, u"no");
        EXPECT_EQ(error.accessGroup, group);
        EXPECT_EQ(error.fault, fault);
    }
}

struct KarvoSimTest : SerialBench {
    ~KarvoSimTest() override
    {
        simulator_.kill();
        simulator_.waitForFinished();
    }
    void start(const char* arguments)
    {
        simulator_.setStandardInputFile(QProcess::nullDevice());
        simulator_.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo-sim"),
                         QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    void openPrintedPath()
    {
        while (!simulator_.canReadLine() && simulator_.waitForReadyRead(5000))
            ;
        plugIn(toText(QString::fromUtf8(simulator_.readLine()).trimmed()));
        ASSERT_FALSE(port_.open());
    }
    // Its exit code, and what it has said.
    std::string end()
    {
        EXPECT_TRUE(simulator_.waitForFinished(5000));
        EXPECT_EQ(simulator_.exitStatus(), QProcess::NormalExit);
        const QByteArray said = simulator_.readAllStandardOutput() + simulator_.readAllStandardError();
        return std::to_string(simulator_.exitCode()) + " " + said.toStdString();
    }

    QProcess simulator_;
};

TEST_F(KarvoSimTest, ComesBackAfterAHangUpKeepsWhatIsWrittenAndEndsOnSigterm)
{
    start("kv04 --pace none --fault hang-up");
    ASSERT_NO_FATAL_FAILURE(openPrintedPath());
    EXPECT_LT(bench_.exchange({0x45, 0x52}, 513).size(), 513U);
    EXPECT_FALSE(port_.isOpen());
    ASSERT_NO_FATAL_FAILURE(openPrintedPath());
    EXPECT_EQ(bench_.exchange({0x45, 0x57, 0x53}, 1), Bytes{6});
    EXPECT_EQ(bench_.exchange({0x63, 0xC8, 0x2B}, 1), Bytes{6});
    port_.close();
    bench_.wait.pause(20ms);
    ASSERT_FALSE(port_.open());
    const Bytes block = bench_.exchange({0x45, 0x52}, 513);
    ASSERT_EQ(block.size(), 513U);
    EXPECT_EQ(block[99], 200);
    simulator_.terminate();
    EXPECT_EQ(end(), "0 ");
}

TEST_F(KarvoSimTest, ListsItsModelsAndRefusesWhatItDoesNotUnderstand)
{
    start("--list");
    EXPECT_TRUE(end().starts_with("0 kv07\nkv07-f3\n"));
    for (const auto& [arguments, message] : test::casesOf<2>("platform/simulator_arguments.txt")) {
        start(arguments.c_str());
        EXPECT_EQ(end(), "2 karvo-sim: " + message + "\n");
    }
}

#endif

} // namespace
} // namespace karvo
