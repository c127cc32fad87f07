// The program put together on the real platform, and the executable's command line.
#include "shell/karvo_program.h"

#include <QListWidget>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

// The user's settings, for this test alone.
struct OwnSettings {
    QTemporaryDir folder;

    OwnSettings()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        QSettings store(QStringLiteral("Karvo"), QStringLiteral("Karvo"));
        store.setValue(QStringLiteral("Parameter/Language"), QStringLiteral("3"));
        store.setValue(QStringLiteral("Parameter/Com_Port"), QStringLiteral("17"));
    }
};

} // namespace

TEST(KarvoProgram, ReadsTheSimulatedDecoderAtTheStoredPort)
{
    const OwnSettings settings;
    ProgramSetup setup;
    setup.programFolder = KARVO_PROGRAM_FOLDER;
    setup.simulated = sim::decoderByName("kv04");
    KarvoProgram program(setup);
    ASSERT_TRUE(program.start());
    Hauptform& window = program.window();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.findChildren<QObject*>(QStringLiteral("MSComm1")).size(), 1);
    const auto timers = window.findChildren<QTimer*>(QStringLiteral("Timer1"));
    ASSERT_EQ(timers.size(), 1);
    EXPECT_EQ(timers.front()->interval(), 5000);
    EXPECT_FALSE(timers.front()->isActive());
    window.readSoon();
    const auto* const list = window.findChild<QListWidget*>(QStringLiteral("List1"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->count() > 100; }, 20000));
}

TEST(KarvoProgram, AnswersOnTheCommandLine)
{
    const struct {
        QStringList arguments;
        int exitCode;
        const char* output; // begins so
        const char* error;
    } cases[] = {
        {{QStringLiteral("--version")}, 0, "karvo 1.", ""},
        {{QStringLiteral("--help")}, 0, "Usage: karvo", ""},
        {{QStringLiteral("--nonsense")}, 2, "", "karvo: unknown option --nonsense"},
        {{QStringLiteral("stray")}, 2, "", "karvo: unknown argument stray"},
        {{QStringLiteral("--simulate"), QStringLiteral("kv99")},
         2,
         "",
         "karvo: there is no simulated decoder kv99"},
        {{QStringLiteral("--map-port=COM0=/dev/x")}, 2, "", "karvo: --map-port needs a port"},
    };
    for (const auto& [arguments, exitCode, output, error] : cases) {
        QProcess process;
        process.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo"), arguments);
        ASSERT_TRUE(process.waitForFinished(20000)) << arguments.join(u' ').toStdString();
        EXPECT_EQ(process.exitCode(), exitCode) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(process.readAllStandardOutput().startsWith(output)) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(process.readAllStandardError().contains(error)) << arguments.join(u' ').toStdString();
    }
}

} // namespace karvo
