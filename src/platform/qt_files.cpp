#include "platform/qt_files.h"

#include "platform/text_conversion.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <algorithm>
#include <system_error>

namespace karvo
{

namespace
{

std::optional<Text> wordsOf(const std::error_code& error)
{
    if (!error)
        return std::nullopt;
    return toText(QString::fromLocal8Bit(error.message().c_str()));
}

} // namespace

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

std::optional<Text> QtFiles::saveAtomically(const std::filesystem::path& path, const Bytes& content)
{
    const QString name = pathToQString(path);
    // A device or a pipe would be replaced by a file.
    if (const QFileInfo old(name); old.exists() && !old.isFile())
        return wordsOf(std::make_error_code(std::errc::invalid_argument));
    QSaveFile file(name);
    const auto size = static_cast<qint64>(content.size());
    const bool saved = file.open(QIODevice::WriteOnly) &&
                       file.write(reinterpret_cast<const char*>(content.data()), size) == size &&
                       file.commit();
    return saved ? std::nullopt : std::optional<Text>(toText(file.errorString()));
}

std::optional<Text> QtFiles::makeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return wordsOf(error);
}

bool QtFiles::canWriteInto(const std::filesystem::path& folder)
{
    // Tried, not asked: neither permissions nor a read-only medium are told reliably.
    return QTemporaryFile(pathToQString(folder / "karvo-XXXXXX")).open();
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

std::optional<Text> QtFiles::remove(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::remove(path, error);
    return wordsOf(error);
}

} // namespace karvo
