#include "platform/qt_locale_info.h"

#include <gtest/gtest.h>

namespace karvo
{

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

} // namespace karvo
