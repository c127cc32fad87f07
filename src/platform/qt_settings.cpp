#include "platform/qt_settings.h"

#include "platform/text_conversion.h"
#include "program/path_text.h"

namespace karvo
{

namespace
{

QString storedName(std::string_view section, std::string_view key)
{
    return QLatin1StringView(section) + QLatin1Char('/') + QLatin1StringView(key);
}

} // namespace

QtSettings::QtSettings(const QString& iniFile)
    : store_(iniFile.isEmpty() ? std::make_unique<QSettings>(QStringLiteral("Karvo"), QStringLiteral("Karvo"))
                               : std::make_unique<QSettings>(iniFile, QSettings::IniFormat))
{
}

std::optional<Text> QtSettings::get(std::string_view section, std::string_view key) const
{
    const QVariant value = store_->value(storedName(section, key));
    if (!value.isValid())
        return std::nullopt;
    // An unquoted comma, typed into the file by hand, makes a list.
    return toText(value.toStringList().join(QStringLiteral(", ")));
}

void QtSettings::save(std::string_view section, std::string_view key, const Text& value)
{
    // To write what is there already would cost a write to disk at every start.
    if (get(section, key) != value)
        store_->setValue(storedName(section, key), toQString(value));
}

std::optional<Text> QtSettings::unwritablePlace()
{
    store_->sync();
    if (store_->status() != QSettings::AccessError && store_->isWritable())
        return std::nullopt;
    return pathText(toPath(store_->fileName()));
}

} // namespace karvo
