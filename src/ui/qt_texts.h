// The words of Qt's own windows, such as the file dialogs, in the program's language.
#pragma once

#include "language/language_code.h"

#include <QTranslator>

#include <filesystem>

namespace karvo
{

// Errors of files and ports stay as they are: they are told in the system's own words.
class WindowTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
};

class QtTexts
{
public:
    // Qt's translations are looked for where Qt is installed, then in "translations" of the program folder.
    explicit QtTexts(const std::filesystem::path& programFolder);

    // At once, for what is shown from now on. Where there are no translations, Qt's English stays.
    void use(LanguageCode code);

private:
    QString ownFolder_;
    WindowTranslator translator_;
};

} // namespace karvo
