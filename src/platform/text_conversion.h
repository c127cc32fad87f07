// Between the logic's types and Qt's.
#pragma once

#include "program/text.h"

#include <QString>

#include <filesystem>

namespace karvo
{

QString toQString(TextView text);
Text toText(QStringView string);

// On systems whose file names are bytes these are read as UTF-8; a name that is none comes back damaged.
QString pathToQString(const std::filesystem::path& path);
std::filesystem::path toPath(const QString& string);

} // namespace karvo
