#include "platform/temporary_files.h"

#include "platform/text_conversion.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSysInfo>

#include <optional>
#include <vector>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#endif

namespace karvo
{

namespace
{

namespace fs = std::filesystem;

// What of the computer's name may stand in any file's name.
QString computerName()
{
    constexpr int longest = 32;
    QString name = QSysInfo::machineHostName();
    name.remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")));
    return name.isEmpty() ? QStringLiteral("local") : name.left(longest);
}

// The process that a name tells; nothing for a name of another kind or of another computer.
std::optional<qint64> ownerOf(const fs::path& path)
{
    static const QRegularExpression pattern(
        QStringLiteral("^karvo-([0-9]{1,10})-[0-9]+-%1\\.tmp$").arg(computerName()));
    const auto match = pattern.match(pathToQString(path.filename()));
    return match.hasMatch() ? std::optional(match.captured(1).toLongLong()) : std::nullopt;
}

} // namespace

fs::path temporaryPath(const fs::path& folder)
{
    static int number = 0;
    std::error_code unknown;
    for (;;) {
        auto path = folder / toPath(QStringLiteral("karvo-%1-%2-%3.tmp")
                                        .arg(QCoreApplication::applicationPid())
                                        .arg(++number)
                                        .arg(computerName()));
        if (!fs::exists(fs::symlink_status(path, unknown)))
            return path;
    }
}

void clearLeftovers(const fs::path& folder)
{
    std::vector<fs::path> leftovers;
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto owner = ownerOf(entry->path());
        if (owner && !isRunning(*owner))
            leftovers.push_back(entry->path());
    }
    for (const auto& path : leftovers)
        fs::remove_all(path, error);
}

#ifdef Q_OS_WIN

bool isRunning(qint64 process)
{
    const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(process));
    if (handle == nullptr)
        return GetLastError() == ERROR_ACCESS_DENIED;
    DWORD state = 0;
    const bool runs = GetExitCodeProcess(handle, &state) == 0 || state == STILL_ACTIVE;
    CloseHandle(handle);
    return runs;
}

#else

bool isRunning(qint64 process)
{
    // 0 and what the system's type can not hold would mean groups of processes.
    const auto number = static_cast<pid_t>(process);
    return number <= 0 || number != process || ::kill(number, 0) == 0 || errno == EPERM;
}

#endif

} // namespace karvo
