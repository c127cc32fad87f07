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
    QSettings(QStringLiteral("Karvo"), QStringLiteral("Karvo"))
        .setValue(QStringLiteral("Parameter/Com_Port"), QStringLiteral("17"));
    ProgramSetup setup{KARVO_PROGRAM_FOLDER, {}, {}, LanguageCode::english, sim::decoderByName("kv04")};
    KarvoProgram program(setup);
    ASSERT_TRUE(program.start());
    Hauptform& window = program.window();
    EXPECT_EQ(window.findChildren<QObject*>(QStringLiteral("MSComm1")).size(), 1);
    const auto& timer = find<QTimer>(window, "Timer1");
    EXPECT_TRUE(timer.interval() == 5000 && !timer.isActive());
    window.readSoon();
    const auto& list = find<QListWidget>(window, "List1");
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.count() > 100; }, 20000));
}

TEST(KarvoProgram, AnswersOnTheCommandLine)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"--version", 0, "karvo 1."},
        {"--help", 0, "Usage: karvo"},
        {"--nonsense", 2, "karvo: unknown option --nonsense"},
        {"stray", 2, "karvo: unknown argument stray"},
        {"--simulate kv99", 2, "karvo: there is no simulated decoder kv99"},
        {"--map-port=COM0=/dev/x", 2, "karvo: --map-port needs a port"},
    };
    for (const auto& [arguments, exitCode, words] : cases) {
        QProcess process;
        process.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo"),
                      QString::fromLatin1(arguments).split(u' '));
        ASSERT_TRUE(process.waitForFinished(20000)) << arguments;
        EXPECT_EQ(process.exitCode(), exitCode) << arguments;
        process.setReadChannel(exitCode == 0 ? QProcess::StandardOutput : QProcess::StandardError);
        EXPECT_TRUE(process.readAll().contains(words)) << arguments;
    }
}

} // namespace karvo::test
