#include "platform/text_conversion.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(TextConversion, CarriesEveryCharacterAndPathBothWays)
{
    const Text text = u"Gr\u00FC\u00DFe \u20AC \u0081\u009D \u4E2D \U0001F697";
    const QString string = QString::fromUtf8("Gr\xC3\xBC\xC3\x9F"
                                             "e \xE2\x82\xAC \xC2\x81\xC2\x9D \xE4\xB8\xAD \xF0\x9F\x9A\x97");
    EXPECT_EQ(toQString(text), string);
    EXPECT_EQ(toText(string), text);
    EXPECT_EQ(toText(QString()), Text());
    EXPECT_EQ(toQString(TextView()), QString());
    const QString path = QString::fromUtf8("/tmp/Fahrzeuge/M\xC3\xBCller & S\xC3\xB6hne/\xE2\x82\xAC.kvr");
    EXPECT_EQ(pathToQString(toPath(path)), path);
    EXPECT_EQ(toPath(path).extension(), ".kvr");
    EXPECT_EQ(toPath(QString()), std::filesystem::path());
}

} // namespace karvo
