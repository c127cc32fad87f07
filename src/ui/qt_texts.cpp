#include "ui/qt_texts.h"

#include "program/path_text.h"
#include "ui/captions.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace karvo
{

QString WindowTranslator::translate(const char* context, const char* sourceText, const char* disambiguation,
                                    int n) const
{
    if (QLatin1StringView(context) == QLatin1StringView("QIODevice"))
        return {};
    return QTranslator::translate(context, sourceText, disambiguation, n);
}

QtTexts::QtTexts(const std::filesystem::path& programFolder)
    : ownFolder_(qtText(pathText(programFolder / "translations")))
{
}

void QtTexts::use(LanguageCode code)
{
    const auto iso = languageFiles(code).isoCode;
    const QString name = QStringLiteral("qtbase_") + QString::fromLatin1(iso.data(), qsizetype(iso.size()));
    QCoreApplication::removeTranslator(&translator_);
    if (translator_.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        translator_.load(name, ownFolder_))
        QCoreApplication::installTranslator(&translator_);
}

} // namespace karvo
