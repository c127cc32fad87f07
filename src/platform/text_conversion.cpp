#include "platform/text_conversion.h"

#include <QFile>

namespace karvo
{

QString toQString(TextView text)
{
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

Text toText(QStringView string)
{
    return Text(string.utf16(), static_cast<std::size_t>(string.size()));
}

QString pathToQString(const std::filesystem::path& path)
{
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.native());
#else
    return QFile::decodeName(QByteArray::fromStdString(path.native()));
#endif
}

std::filesystem::path toPath(const QString& string)
{
#ifdef Q_OS_WIN
    return string.toStdWString();
#else
    return QFile::encodeName(string).toStdString();
#endif
}

} // namespace karvo
