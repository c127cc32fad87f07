// The program put together on the real platform, and the executable's command line.
#include "shell/karvo_program.h"

#include "shell/controls.h"

#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace karvo::test
{

TEST(KarvoProgram, ReadsTheSimulatedDecoderAtTheStoredPort)
{
    const QTemporaryDir folder; // for this test's settings alone
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    {
        QSettings store(QStringLiteral("Karvo"), QStringLiteral("Karvo"));
        store.setValue(QStringLiteral("Parameter/Language"), QStringLiteral("3"));
        store.setValue(QStringLiteral("Parameter/Com_Port"), QStringLiteral("17"));
    }
    ProgramSetup setup;
    setup.programFolder = KARVO_PROGRAM_FOLDER;
    setup.simulated = sim::decoderByName("kv04");
    KarvoProgram program(setup);
    ASSERT_TRUE(program.start());
    Hauptform& window = program.window();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.findChildren<QObject*>(QStringLiteral("MSComm1")).size(), 1);
    const auto& timer = find<QTimer>(window, "Timer1");
    EXPECT_EQ(timer.interval(), 5000);
    EXPECT_FALSE(timer.isActive());
    window.readSoon();
    const auto& list = find<QListWidget>(window, "List1");
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.count() > 100; }, 20000));
}

TEST(KarvoProgram, AnswersOnTheCommandLine)
{
    const struct {
        const char* arguments;
        int exitCode;
        const char* output; // begins so
        const char* error;
    } cases[] = {
        {"--version", 0, "karvo 1.", ""},
        {"--help", 0, "Usage: karvo", ""},
        {"--nonsense", 2, "", "karvo: unknown option --nonsense"},
        {"stray", 2, "", "karvo: unknown argument stray"},
        {"--simulate kv99", 2, "", "karvo: there is no simulated decoder kv99"},
        {"--map-port=COM0=/dev/x", 2, "", "karvo: --map-port needs a port"},
    };
    for (const auto& [arguments, exitCode, output, error] : cases) {
        QProcess process;
        process.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo"),
                      QString::fromLatin1(arguments).split(u' '));
        ASSERT_TRUE(process.waitForFinished(20000)) << arguments;
        EXPECT_EQ(process.exitCode(), exitCode) << arguments;
        EXPECT_TRUE(process.readAllStandardOutput().startsWith(output)) << arguments;
        EXPECT_TRUE(process.readAllStandardError().contains(error)) << arguments;
    }
}

} // namespace karvo::test
