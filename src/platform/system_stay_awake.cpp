#include "platform/system_stay_awake.h"

#include "platform/text_conversion.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <QStandardPaths>

#include <unistd.h>
#endif

namespace karvo
{

#ifdef Q_OS_WIN

void SystemStayAwake::begin(const Text& /*why*/)
{
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
}

void SystemStayAwake::end()
{
    SetThreadExecutionState(ES_CONTINUOUS);
}

#else

void SystemStayAwake::begin(const Text& why)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("systemd-inhibit"));
    if (program.isEmpty() || inhibitor_.state() != QProcess::NotRunning)
        return;
    inhibitor_.setStandardOutputFile(QProcess::nullDevice());
    inhibitor_.setStandardErrorFile(QProcess::nullDevice());
    inhibitor_.setChildProcessModifier([] { setpgid(0, 0); }); // a Ctrl-C does not reach it
    // `cat` lasts as long as its input: the lock cannot outlive this program.
    inhibitor_.start(program, {QStringLiteral("--what=sleep:idle"), QStringLiteral("--who=Karvo"),
                               QStringLiteral("--why=") + toQString(why), QStringLiteral("cat")});
}

void SystemStayAwake::end()
{
    constexpr int patienceMs = 500;
    if (inhibitor_.state() == QProcess::NotRunning)
        return;
    inhibitor_.closeWriteChannel();
    if (inhibitor_.waitForFinished(patienceMs))
        return;
    inhibitor_.kill();
    inhibitor_.waitForFinished(patienceMs);
}

#endif

} // namespace karvo
