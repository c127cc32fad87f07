#include "ui/captions.h"
#include "ui/typed_text.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(TypedText, RefusesWhatTheFilesCannotHold)
{
    const struct {
        QString typed;
        QValidator::State state;
    } cases[] = {
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

TEST(Captions, KeepAnAmpersandInButtonsAndMenus)
{
    EXPECT_EQ(buttonText(u"Bremsen & Beschleunigen").toStdString(), "Bremsen && Beschleunigen");
    EXPECT_EQ(qtText(u"Bremsen & Beschleunigen").toStdString(), "Bremsen & Beschleunigen");
}

TEST(Captions, PutValuesInTheirPlaces)
{
    LanguageTables texts;
    texts.captions[27] = u"0027Byte {1} von {2}\tnur im Tipp {1}";
    EXPECT_EQ(filledCaption(texts, Caption::bytesReceived, {u"12", u"513"}).toStdString(), "Byte 12 von 513");
}

} // namespace karvo
