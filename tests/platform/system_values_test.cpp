// What the system tells and keeps: settings, the locale, the time, and its strings.
#include "platform/qt_clock.h"
#include "platform/qt_locale_info.h"
#include "platform/qt_settings.h"
#include "platform/text_conversion.h"
#include "support/scratch_folder.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

struct QtSettingsTest : testing::Test {
    test::ScratchFolder scratch;
    QString path = pathToQString(scratch.path() / "Karvo.conf");
};

TEST_F(QtSettingsTest, TheFiveParametersOutliveTheProgram)
{
    const std::pair<std::string_view, Text> parameters[] = {
        {"Language", u"3"},
        {"Com_Port", u"31"},
        {"ATMELpath", u"C:\\Firmware\\K\u00E4fer; neu, \"gut\" 100 %"},
        {"Location", u""},
        {"Expert", u"0"},
    };
    {
        QtSettings settings(path);
        for (const auto& [key, value] : parameters) {
            settings.save("Parameter", key, u"before");
            settings.save("Parameter", key, value);
        }
        EXPECT_EQ(settings.unwritablePlace(), std::nullopt);
    }
    const QtSettings settings(path);
    for (const auto& [key, value] : parameters)
        EXPECT_EQ(settings.get("Parameter", key), value) << key;
    EXPECT_EQ(settings.get("Ports", "Language"), std::nullopt);
}

TEST_F(QtSettingsTest, WhatSomebodyTypedIntoTheFileIsReadAsText)
{
    scratch.write("Karvo.conf", "[Parameter]\nCom_Port=5\nATMELpath=/home/me/old, new\nLanguage=\"@\"\n"
                                "[Ports]\nCOM5=/dev/ttyUSB3\n");
    const QtSettings settings(path);
    EXPECT_EQ(settings.get("Parameter", "Com_Port"), u"5");
    EXPECT_EQ(settings.get("Parameter", "ATMELpath"), u"/home/me/old, new");
    EXPECT_EQ(settings.get("Parameter", "Language"), u"@");
    EXPECT_EQ(settings.get("Ports", "COM5"), u"/dev/ttyUSB3");
}

TEST_F(QtSettingsTest, AFileThatIsNoneGivesNothingAndAPlaceThatIsNoneIsTold)
{
    scratch.write("Karvo.conf", std::string("\x7F"
                                            "ELF\x02\x01\0\0\xFF\xFE[Parameter\nLanguage",
                                            28));
    EXPECT_EQ(QtSettings(path).get("Parameter", "Language"), std::nullopt);
    const QString belowAFile = path + QStringLiteral("/Karvo.conf");
    QtSettings settings(belowAFile);
    settings.save("Parameter", "Language", u"1");
    EXPECT_EQ(settings.unwritablePlace(), toText(belowAFile));
}

TEST(QtLocaleInfo, CountriesHaveTheirThreeLetters)
{
    const std::pair<QLocale::Territory, Text> expected[] = {
        {QLocale::Germany, u"DEU"},      {QLocale::Austria, u"AUT"}, {QLocale::Switzerland, u"CHE"},
        {QLocale::Netherlands, u"NLD"},  {QLocale::Belgium, u"BEL"}, {QLocale::UnitedKingdom, u"GBR"},
        {QLocale::UnitedStates, u"USA"}, {QLocale::Canada, u"CAN"},  {QLocale::Australia, u"AUS"},
        {QLocale::NewZealand, u"NZL"},   {QLocale::Spain, u"ESP"},   {QLocale::France, u"FRA"},
        {QLocale::Argentina, u"ARG"},    {QLocale::Bolivia, u"BOL"}, {QLocale::Chile, u"CHL"},
        {QLocale::AnyTerritory, Text()}, {QLocale::Japan, Text()},
    };
    for (const auto& [territory, abbreviation] : expected)
        EXPECT_EQ(countryAbbreviation(territory), abbreviation) << territory;
}

#ifndef Q_OS_WIN
// Each locale in a process of its own: Qt asks the system once.
TEST(QtLocaleInfoDeathTest, FollowsTheLocaleOfTheUser)
{
    for (const auto& [locale, abbreviation] :
         {std::pair{"nl_BE.UTF-8", u"BEL"}, {"fr_FR", u"FRA"}, {"C", u""}}) {
        const auto answersAsExpected = [&] {
            qputenv("LC_ALL", locale);
            return QtLocaleInfo().countryAbbreviation() == abbreviation;
        };
        EXPECT_EXIT(std::exit(answersAsExpected() ? 0 : 1), testing::ExitedWithCode(0), "") << locale;
    }
}
#endif

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

TEST(QtClockTest, TellsTheLocalTime)
{
    const QDateTime before = QDateTime::currentDateTime();
    const DateTime now = QtClock().now();
    const QDateTime told({now.year, now.month, now.day}, {now.hour, now.minute, now.second});
    EXPECT_LE(before.toSecsSinceEpoch(), told.toSecsSinceEpoch());
    EXPECT_LE(told, QDateTime::currentDateTime());
}

} // namespace
} // namespace karvo
