#include "language/first_start.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using Captions = LanguageButtonCaptions;

constexpr Captions german = {u"Deutsch", u"Niederländisch", u"Englisch", u"Spanisch", u"Französisch"};
constexpr Captions dutch = {u"Duitse", u"Nederlands", u"Engels", u"Spain", u"France"};
constexpr Captions english = {u"German", u"Dutch", u"English", u"Spain", u"France"};
constexpr Captions spanish = {u"Duitse", u"Nederlands", u"Engels", u"Spaanse taal", u"Franse taal"};
constexpr Captions french = {u"Allemande", u"Néelandaise", u"Anglais", u"Espagnol", u"Français"};

TEST(FirstStartTest, CaptionsFollowTheLocale)
{
    struct Case {
        TextView locale;
        Captions captions;
    };
    const Case cases[] = {{u"deu", german},
                          {u"DEU", german},
                          {u"German-Swiss", german},
                          {u"nld", dutch},
                          {u"nlb", dutch},
                          {u"belgian", dutch},
                          {u"usa", english},
                          {u"american english", english},
                          {u"spain", spanish},
                          {u"france", french},
                          {u"FRANCE", french},
                          // These never reach their row.
                          {u"argentinen", english},
                          {u"Argentinen", english},
                          {u"Chile", english},
                          {u"bolivien", english},
                          // The countries' abbreviations that no list holds.
                          {u"fra", english},
                          {u"esp", english},
                          {u"aut", english},
                          {u"", english},
                          {u"deutsch", english},
                          {u" deu", english}};
    for (const Case& c : cases)
        EXPECT_EQ(languageButtonCaptions(c.locale), c.captions) << utf8FromText(c.locale);
}

TEST(FirstStartTest, CancelTextHasThreeLanguagesWithEmptyLinesBetween)
{
    EXPECT_EQ(noLanguageChosenText,
              u"Programm wird beendet !\r\n\r\nProgramma sluit !\r\n\r\nProgram will be closed !");
}

} // namespace
} // namespace karvo
