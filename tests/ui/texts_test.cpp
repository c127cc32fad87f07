// What is typed and shown: the files' characters, captions, and Qt's own words.
#include "ui/captions.h"
#include "ui/qt_texts.h"
#include "ui/typed_text.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace karvo
{

TEST(TypedText, RefusesWhatTheFilesCannotHold)
{
    const std::pair<QString, QValidator::State> cases[] = {
        {QStringLiteral("Größe 5 €"), QValidator::Acceptable},
        {QString(), QValidator::Acceptable},
        {QStringLiteral("Łódź"), QValidator::Invalid},
        {QStringLiteral("\U0001F697"), QValidator::Invalid},
    };
    const Windows1252Validator validator(nullptr);
    for (const auto& [typed, state] : cases) {
        QString text = typed;
        int position = 0;
        EXPECT_EQ(validator.validate(text, position), state) << typed.toStdString();
        EXPECT_EQ(text, typed);
    }
}

TEST(Captions, KeepAnAmpersandAndPutValuesInTheirPlaces)
{
    EXPECT_EQ(buttonText(u"Bremsen & Beschleunigen").toStdString(), "Bremsen && Beschleunigen");
    EXPECT_EQ(qtText(u"Bremsen & Beschleunigen").toStdString(), "Bremsen & Beschleunigen");
    LanguageTables texts;
    texts.captions[27] = u"0027Byte {1} von {2}\tnur im Tipp {1}";
    EXPECT_EQ(filledCaption(texts, Caption::bytesReceived, {u"12", u"513"}).toStdString(), "Byte 12 von 513");
}

TEST(QtTexts, FollowTheLanguage)
{
    QtTexts texts(KARVO_PROGRAM_FOLDER);
    const std::pair<LanguageCode, const char*> cases[] = {{LanguageCode::german, "Abbrechen"},
                                                          {LanguageCode::dutch, "Annuleren"},
                                                          {LanguageCode::french, "Annuler"},
                                                          {LanguageCode::spanish, "Cancelar"},
                                                          {LanguageCode::english, "Cancel"}};
    for (const auto& [code, cancel] : cases) {
        texts.use(code);
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(), cancel);
        EXPECT_EQ(qt_error_string(2).toStdString(), "No such file or directory") << "the system's own words";
    }
}

} // namespace karvo
