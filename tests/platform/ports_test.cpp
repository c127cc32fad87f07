// The ports with a wait, as the program puts them together: the simulator behind a port, and the system's
// serial class over pseudo terminals, one whose far end the test leads, and that of karvo-sim.
#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "platform/system_serial_port.h"
#include "platform/text_conversion.h"
#include "support/case_table.h"
#include "support/far_end.h"
#include "support/memory_files.h"
#include "support/processor_time.h"

#include <QThread>

#ifdef Q_OS_UNIX
#include "cli/pseudo_terminal.h"
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
    const auto before = test::processorTime();
    port.write({0x25});
    EXPECT_EQ(bench.waitForBytes(1, 100ms), WaitResult::timedOut);
    EXPECT_LT(test::processorTime() - before, 20ms) << "silence costs none";
}

struct SerialBench {
    SerialBench() { port_.setPortNumber(5); }
    void plugIn(const Text& device) { settings_.save("Ports", "COM5", device); }

    test::MemorySettings settings_;
    PortMap map_{settings_};
    SystemSerialPort port_{map_};
    LineBench bench_{port_};
};

// "00..02 FF" are the bytes 0, 1, 2, 255.
Bytes bytesFrom(const std::string& words)
{
    Bytes bytes;
    for (const std::string& word : test::wordsOf(words)) {
        const int last = std::stoi(word.substr(word.size() - 2), nullptr, 16);
        for (int byte = std::stoi(word, nullptr, 16); byte <= last; ++byte)
            bytes.push_back(static_cast<std::uint8_t>(byte));
    }
    return bytes;
}

std::string wordsFrom(const Bytes& bytes)
{
    std::string words;
    for (std::size_t first = 0, end = 0; first < bytes.size(); first = end) {
        while (++end < bytes.size() && bytes[end] == bytes[end - 1] + 1)
            ;
        char word[8];
        std::snprintf(word, sizeof word, end - first > 1 ? "%02X..%02X" : "%02X", bytes[first],
                      bytes[end - 1]);
        words += (words.empty() ? "" : " ") + std::string(word);
    }
    return words;
}

class LineSteps : SerialBench
{
public:
    LineSteps() { plugIn(toText(farEnd->device())); }

    void script(const std::string& command)
    {
        if (!command.empty())
            farEnd->ask(command.c_str());
    }

    test::Steps steps{
        {"far", [](const std::string& words) { return farAnswer(words); }},
        {"set", [this](const std::string& words) { return set(test::wordsOf(words)); }},
        {"open", [this](const std::string&) { return open(); }},
        {"close", [this](const std::string&) { return port_.close(), ""; }},
        {"write", [this](const std::string& words) { return port_.write(bytesFrom(words)), ""; }},
        {"write-each", [this](const std::string& words) { return writeEach(bytesFrom(words)), ""; }},
        {"await", [this](const std::string& count) { return await(std::stoul(count)); }},
        {"pause", [this](const std::string& ms) { return pause(std::chrono::milliseconds(std::stoi(ms))); }},
        {"idle", [](const std::string& ms) { return QThread::msleep(std::stoul(ms)), ""; }},
        {"closes-when-told", [this](const std::string&) { return closeWhenTold(), ""; }},
    };

    static inline std::optional<test::FarEnd> farEnd;

private:
    static std::string farAnswer(const std::string& command)
    {
        const QByteArray answer = farEnd->ask(command.c_str());
        if (!command.starts_with("take"))
            return answer.toStdString();
        const QByteArray bytes = QByteArray::fromHex(answer);
        return wordsFrom(Bytes(bytes.begin(), bytes.end()));
    }
    std::string set(const std::vector<std::string>& words)
    {
        const auto parity = words[1] == "odd"    ? Parity::odd
                            : words[1] == "even" ? Parity::even
                                                 : Parity::none;
        port_.setSettings({std::stoi(words[0]), parity, std::stoi(words[2])});
        return {};
    }
    std::string open()
    {
        const auto error = port_.open();
        EXPECT_EQ(port_.isOpen(), !error);
        return !error ? "open" : error->fault == PortFault::absent ? "absent" : "refused";
    }
    void writeEach(const Bytes& bytes)
    {
        for (const std::uint8_t byte : bytes)
            port_.write({byte});
    }
    std::string await(std::size_t count)
    {
        bench_.notices = 0;
        bench_.waitForBytes(count);
        return port_.isOpen() ? wordsFrom(port_.readAll()) : told();
    }
    std::string pause(std::chrono::milliseconds length)
    {
        bench_.notices = 0;
        const auto before = test::processorTime();
        bench_.wait.pause(length);
        EXPECT_LT(test::processorTime() - before, length / 4 + 20ms) << "it sleeps, open or hung up";
        return told();
    }
    std::string told() const
    {
        EXPECT_EQ(port_.bytesWaiting(), 0U);
        return "told " + std::to_string(bench_.notices) + (port_.isOpen() ? ", open" : ", closed");
    }
    void closeWhenTold()
    {
        port_.setNotice([this] {
            ++bench_.notices;
            port_.close();
            bench_.wait.wake();
        });
    }
};

TEST(SystemSerialPort, KeepsToTheSameStepsOnEverySystem)
{
    LineSteps::farEnd.emplace();
    if (LineSteps::farEnd->isThere())
        test::carryOut<LineSteps>("platform/line.txt");
    const bool wasThere = LineSteps::farEnd->isThere();
    LineSteps::farEnd.reset();
    if (!wasThere)
        GTEST_SKIP() << "KARVO_FAR_END names no far end of COM5";
}

TEST(SystemSerialPort, ARefusalTellsTheDeviceAndWhy)
{
    const std::tuple<Text, PortFault> refused[] = {
#ifdef Q_OS_WIN
        {u"COM77", PortFault::absent},
        {u"NUL", PortFault::notSerial},
#else
        {u"/dev/no-such-device", PortFault::absent},
        {u"/dev/null", PortFault::notSerial},
        {u"/etc", PortFault::notSerial},
#endif
    };
    SerialBench bench;
    for (const auto& [device, fault] : refused) {
        bench.plugIn(device);
        const auto error = bench.port_.open();
        ASSERT_TRUE(error) << utf8FromText(device);
        EXPECT_EQ(error->fault, fault) << utf8FromText(device) << ": " << utf8FromText(error->description);
        EXPECT_EQ(error->device, device);
        EXPECT_FALSE(error->description.empty());
        EXPECT_FALSE(bench.port_.isOpen());
    }
}

#ifdef Q_OS_UNIX
TEST(QtSerialPort, WhatAPseudoTerminalDoesNotShow)
{
    const PseudoTerminal device;
    SerialBench bench;
    bench.plugIn(textFromUtf8(device.path()));
    bench.port_.setSettings({14400, Parity::odd, 2});
    ASSERT_FALSE(bench.port_.open());
    auto* const port = bench.port_.findChild<QSerialPort*>();
    EXPECT_EQ(port->baudRate(), 14400);
    EXPECT_EQ(port->parity(), QSerialPort::OddParity);
    EXPECT_FALSE(port->setDataTerminalReady(true));
    bench.bench_.wait.pause(10ms);
    EXPECT_TRUE(bench.port_.isOpen()) << "what a device can not do is no hang-up";
    SerialBench second;
    second.plugIn(textFromUtf8(device.path()));
    const auto error = second.port_.open();
    EXPECT_TRUE(error && error->fault == PortFault::busy);

    const std::tuple<DeviceAccess, Text, PortFault> groups[] = {
        {{true, QStringLiteral("dialout")}, u"dialout", PortFault::denied},
        {{true, QStringLiteral("root")}, u"", PortFault::denied},
        {{false, QStringLiteral("dialout")}, u"", PortFault::busy},
    };
    for (const auto& [access, group, fault] : groups) {
        const auto refusal =
            portError({QSerialPort::PermissionError, QStringLiteral("no"), QString()}, access);
        EXPECT_EQ(refusal.description, u"no");
        EXPECT_EQ(refusal.accessGroup, group);
        EXPECT_EQ(refusal.fault, fault);
    }
}

struct KarvoSimTest : testing::Test, SerialBench {
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
