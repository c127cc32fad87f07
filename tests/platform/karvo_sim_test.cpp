// The program karvo-sim, talked to through the real serial class.
#include "platform/line_bench.h"
#include "platform/qt_serial_port.h"
#include "platform/qt_settings.h"
#include "platform/text_conversion.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

// Of the child processes that have ended, in milliseconds.
long childProcessorTime()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return 1000 * (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

struct KarvoSimTest : testing::Test {
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
    // COM5 is the device that was printed last.
    void openPrintedPath()
    {
        while (!simulator_.canReadLine() && simulator_.waitForReadyRead(5000))
            ;
        const QString path = QString::fromUtf8(simulator_.readLine()).trimmed();
        ASSERT_TRUE(path.startsWith(QLatin1Char('/'))) << path.toStdString();
        settings_.save("Ports", "COM5", toText(path));
        port_.setPortNumber(5);
        ASSERT_FALSE(port_.open());
    }

    QTemporaryDir folder_;
    QtSettings settings_{folder_.filePath(QStringLiteral("Karvo.conf"))};
    PortMap map_{settings_};
    QtSerialPort port_{map_};
    test::LineBench bench_{port_};
    QProcess simulator_;
};

TEST_F(KarvoSimTest, KeepsWhatWasWrittenWhenItsUserComesAndGoes)
{
    start("kv08 --pace none");
    ASSERT_NO_FATAL_FAILURE(openPrintedPath());
    EXPECT_EQ(bench_.exchange({0x25}, 2), (Bytes{'2', '8'}));
    EXPECT_EQ(bench_.exchange({0x45, 0x57, 0x53}, 1), Bytes{6});
    EXPECT_EQ(bench_.exchange({0x63, 0xC8, 0x2B}, 1), Bytes{6});
    for (int round = 0; round < 3; ++round) {
        port_.close();
        bench_.wait.pause(20ms);
        ASSERT_FALSE(port_.open());
        const Bytes block = bench_.exchange({0x45, 0x52}, 1025);
        ASSERT_EQ(block.size(), 1025U);
        EXPECT_EQ(block[99], 200);
        EXPECT_EQ(block[508], 0x1E);
    }
}

TEST_F(KarvoSimTest, ComesBackAfterAHangUp)
{
    start("kv04 --pace none --fault hang-up");
    ASSERT_NO_FATAL_FAILURE(openPrintedPath());
    EXPECT_LT(bench_.exchange({0x45, 0x52}, 513).size(), 513U);
    EXPECT_FALSE(port_.isOpen());
    ASSERT_NO_FATAL_FAILURE(openPrintedPath());
    EXPECT_EQ(bench_.exchange({0x45, 0x52}, 513).size(), 513U);
}

TEST_F(KarvoSimTest, KeepsTheLinesPaceAndSleepsWhileNobodyAsksAndEndsOnSigterm)
{
    const long before = childProcessorTime();
    start("kv07");
    ASSERT_NO_FATAL_FAILURE(openPrintedPath());
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(bench_.exchange({0x25}, 2).size(), 2U);
    EXPECT_GE(clock.elapsed(), 6); // three bytes at 4800 baud
    port_.close();
    bench_.wait.pause(400ms);
    simulator_.terminate();
    ASSERT_TRUE(simulator_.waitForFinished(5000));
    EXPECT_EQ(simulator_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(simulator_.exitCode(), 0);
    EXPECT_LT(childProcessorTime() - before, 200) << "its start included";
}

TEST_F(KarvoSimTest, ListsItsModelsAndRefusesWhatItDoesNotUnderstand)
{
    start("--list");
    ASSERT_TRUE(simulator_.waitForFinished(5000));
    EXPECT_EQ(simulator_.exitCode(), 0);
    const QByteArray models = simulator_.readAllStandardOutput();
    EXPECT_TRUE(models.startsWith("kv07\nkv07-f3\n")) << models.constData();
    EXPECT_TRUE(models.endsWith("\nreceiver-2016\nreceiver-readonly\n")) << models.constData();
    const std::pair<const char*, const char*> cases[] = {
        {"", "no model given, --list names them"},
        {"kv99", "unknown model \"kv99\", --list names them"},
        {"kv07 kv08", "one model only, \"kv08\" is a second one"},
        {"kv07 --fault smoke", "unknown fault \"smoke\", --help names them"},
        {"kv07 --fault", "--fault needs a value"},
        {"kv07 --pace fast", "unknown pace \"fast\": line or none"},
        {"kv07 --port COM5", "unknown option --port"},
    };
    for (const auto& [arguments, message] : cases) {
        start(arguments);
        ASSERT_TRUE(simulator_.waitForFinished(5000)) << arguments;
        EXPECT_EQ(simulator_.exitCode(), 2) << arguments;
        EXPECT_EQ(simulator_.readAllStandardError().toStdString(),
                  std::string("karvo-sim: ") + message + "\n");
        EXPECT_EQ(simulator_.readAllStandardOutput().toStdString(), "");
    }
}

} // namespace
} // namespace karvo
