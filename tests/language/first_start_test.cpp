#include "language/first_start.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(FirstStartTest, CaptionsFollowTheLocale)
{
    struct Case {
        TextView locale;
        TextView first, last; // the buttons for German and French
    };
    const Case cases[] = {
        {u"deu", u"Deutsch", u"Französisch"},  {u"German-Swiss", u"Deutsch", u"Französisch"},
        {u"nlb", u"Duitse", u"France"},        {u"american english", u"German", u"France"},
        {u"spain", u"Duitse", u"Franse taal"}, {u"FRANCE", u"Allemande", u"Français"},
        {u"Chile", u"German", u"France"}, // never reaches its row
        {u" deu", u"German", u"France"}};
    for (const auto& [locale, first, last] : cases) {
        const LanguageButtonCaptions& captions = languageButtonCaptions(locale);
        EXPECT_EQ(captions.front(), first) << utf8FromText(locale);
        EXPECT_EQ(captions.back(), last) << utf8FromText(locale);
    }
}

} // namespace karvo
