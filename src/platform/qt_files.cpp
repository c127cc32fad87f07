#include "platform/qt_files.h"

#include "platform/qt_clock.h"
#include "platform/safe_file.h"
#include "platform/system_words.h"
#include "platform/temporary_files.h"
#include "platform/text_conversion.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <system_error>

namespace karvo
{

std::optional<Bytes> QtFiles::readWhole(const std::filesystem::path& path, std::size_t limit)
{
    QFile file(pathToQString(path));
    // Asked before opening: to open a named pipe would wait for a writer.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // The stated size may be 0 (/proc) or grow meanwhile, so the limit holds for what is read.
    const QByteArray content = file.read(static_cast<qint64>(limit) + 1);
    if (file.error() != QFileDevice::NoError || static_cast<std::size_t>(content.size()) > limit)
        return std::nullopt;
    return Bytes(content.begin(), content.end());
}

bool QtFiles::exists(const std::filesystem::path& path)
{
    return QFileInfo::exists(pathToQString(path));
}

std::uintmax_t QtFiles::sizeOf(const std::filesystem::path& path)
{
    const QFileInfo file(pathToQString(path));
    return file.isFile() ? static_cast<std::uintmax_t>(file.size()) : 0;
}

std::error_code QtFiles::saveAtomically(const std::filesystem::path& path, const Bytes& content)
{
    SafeFile file(path);
    auto error = file.open();
    if (!error)
        error = file.write(content);
    return error ? error : file.commit();
}

std::filesystem::path QtFiles::temporaryPath(const std::filesystem::path& folder)
{
    clearLeftovers(folder);
    return karvo::temporaryPath(folder);
}

std::optional<DateTime> QtFiles::changedAt(const std::filesystem::path& path)
{
    const QDateTime time = QFileInfo(pathToQString(path)).lastModified();
    return time.isValid() ? std::optional(dateTime(time)) : std::nullopt;
}

std::error_code QtFiles::makeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return error;
}

bool QtFiles::canWriteInto(const std::filesystem::path& folder)
{
    // Tried, not asked: neither permissions nor a read-only medium are told reliably.
    QFile file(pathToQString(temporaryPath(folder)));
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.remove();
}

std::vector<FolderEntry> QtFiles::list(const std::filesystem::path& folder)
{
    std::vector<FolderEntry> entries;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        entries.push_back({entry->path().filename(), entry->is_directory(unknown)});
    }
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    return entries;
}

std::error_code QtFiles::remove(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::remove(path, error);
    return error;
}

Text QtFiles::systemWords(const std::error_code& error) const
{
    return karvo::systemWords(error);
}

} // namespace karvo
