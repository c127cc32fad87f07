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
using test::LineBench;

const QString program = QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo-sim");

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// Of the child processes that have ended, in milliseconds.
double childProcessorTime()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto milliseconds = [](const timeval& time) {
        return 1000.0 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1000.0;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

class KarvoSimTest : public testing::Test
{
protected:
    ~KarvoSimTest() override
    {
        if (simulator_.state() != QProcess::NotRunning) {
            simulator_.kill();
            simulator_.waitForFinished();
        }
    }

    void start(const char* arguments)
    {
        simulator_.setStandardInputFile(QProcess::nullDevice());
        simulator_.start(program, words(arguments));
        ASSERT_NO_FATAL_FAILURE(usePrintedPath());
    }

    // COM5 is the device that was printed last.
    void usePrintedPath()
    {
        while (!simulator_.canReadLine() && simulator_.waitForReadyRead(5000))
            ;
        const QString path = QString::fromUtf8(simulator_.readLine()).trimmed();
        ASSERT_TRUE(path.startsWith(QLatin1Char('/'))) << path.toStdString();
        settings_.save("Ports", "COM5", toText(path));
        port_.setPortNumber(5);
    }

    QTemporaryDir folder_;
    QtSettings settings_{folder_.filePath(QStringLiteral("Karvo.conf"))};
    PortMap map_{settings_};
    QtSerialPort port_{map_};
    LineBench bench_{port_};
    QProcess simulator_;
};

TEST_F(KarvoSimTest, ServesADecoderOnTheDeviceThatItPrints)
{
    ASSERT_NO_FATAL_FAILURE(start("kv08 --pace none"));
    ASSERT_FALSE(port_.open());
    EXPECT_EQ(bench_.exchange({0x25}, 2), (Bytes{'2', '8'}));
    const Bytes block = bench_.exchange({0x45, 0x52}, 1025);
    ASSERT_EQ(block.size(), 1025U);
    EXPECT_EQ(block[0], 3);
    EXPECT_EQ(block[508], 0x1E);
}

TEST_F(KarvoSimTest, KeepsWhatWasWrittenWhenItsUserComesAndGoes)
{
    ASSERT_NO_FATAL_FAILURE(start("kv04 --pace none"));
    ASSERT_FALSE(port_.open());
    EXPECT_EQ(bench_.exchange({0x45, 0x57, 0x53}, 1), Bytes{6});
    EXPECT_EQ(bench_.exchange({0x63, 0xC8, 0x2B}, 1), Bytes{6});
    for (int round = 0; round < 3; ++round) {
        port_.close();
        bench_.wait.pause(20ms);
        ASSERT_FALSE(port_.open());
        const Bytes block = bench_.exchange({0x45, 0x52}, 513);
        ASSERT_EQ(block.size(), 513U);
        EXPECT_EQ(block[99], 200);
    }
}

TEST_F(KarvoSimTest, KeepsThePaceOfTheLine)
{
    ASSERT_NO_FATAL_FAILURE(start("kv04"));
    ASSERT_FALSE(port_.open());
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(bench_.exchange({0x45, 0x52}, 513).size(), 513U);
    EXPECT_GE(clock.elapsed(), 1072); // 515 bytes at 4800 baud
    EXPECT_LT(clock.elapsed(), 1600);
}

TEST_F(KarvoSimTest, ComesBackAfterAHangUp)
{
    ASSERT_NO_FATAL_FAILURE(start("kv04 --pace none --fault hang-up"));
    ASSERT_FALSE(port_.open());
    EXPECT_LT(bench_.exchange({0x45, 0x52}, 513).size(), 513U);
    EXPECT_FALSE(port_.isOpen());

    ASSERT_NO_FATAL_FAILURE(usePrintedPath());
    ASSERT_FALSE(port_.open());
    EXPECT_EQ(bench_.exchange({0x45, 0x52}, 513).size(), 513U);
}

TEST_F(KarvoSimTest, SleepsWhileNobodyAsksAndEndsOnSigterm)
{
    const double before = childProcessorTime();
    ASSERT_NO_FATAL_FAILURE(start("kv07"));
    ASSERT_FALSE(port_.open());
    port_.close();
    bench_.wait.pause(1000ms);
    simulator_.terminate();
    ASSERT_TRUE(simulator_.waitForFinished(5000));
    EXPECT_EQ(simulator_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(simulator_.exitCode(), 0);
    EXPECT_LT(childProcessorTime() - before, 200.0) << "its start included";
}

TEST_F(KarvoSimTest, ListsTheModels)
{
    simulator_.start(program, words("--list"));
    ASSERT_TRUE(simulator_.waitForFinished(5000));
    EXPECT_EQ(simulator_.exitCode(), 0);
    const QByteArray models = simulator_.readAllStandardOutput();
    EXPECT_TRUE(models.startsWith("kv07\nkv07-f3\n")) << models.constData();
    EXPECT_TRUE(models.endsWith("\nreceiver-2016\nreceiver-readonly\n")) << models.constData();
}

TEST_F(KarvoSimTest, RefusesWhatItDoesNotUnderstand)
{
    const std::vector<std::pair<const char*, const char*>> cases{
        {"", "karvo-sim: no model given, --list names them\n"},
        {"kv99", "karvo-sim: unknown model \"kv99\", --list names them\n"},
        {"kv07 kv08", "karvo-sim: one model only, \"kv08\" is a second one\n"},
        {"kv07 --fault smoke", "karvo-sim: unknown fault \"smoke\", --help names them\n"},
        {"kv07 --fault", "karvo-sim: --fault needs a value\n"},
        {"kv07 --pace fast", "karvo-sim: unknown pace \"fast\": line or none\n"},
        {"kv07 --port COM5", "karvo-sim: unknown option --port\n"},
    };
    for (const auto& [arguments, message] : cases) {
        simulator_.start(program, words(arguments));
        ASSERT_TRUE(simulator_.waitForFinished(5000)) << arguments;
        EXPECT_EQ(simulator_.exitCode(), 2) << arguments;
        EXPECT_EQ(simulator_.readAllStandardError().toStdString(), message);
        EXPECT_EQ(simulator_.readAllStandardOutput().toStdString(), "");
    }
}

} // namespace

} // namespace karvo
