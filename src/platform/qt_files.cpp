#include "platform/qt_files.h"

#include "platform/text_conversion.h"

#include <QFile>
#include <QFileInfo>

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

} // namespace karvo
