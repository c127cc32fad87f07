#include "language/first_start.h"

#include <algorithm>
#include <span>

namespace karvo
{

namespace
{

constexpr TextView germanLocales[] = {u"deu", u"german",       u"dea",  u"german-austrian",
                                      u"des", u"german-swiss", u"swiss"};
constexpr TextView dutchLocales[] = {u"dutch", u"nld", u"belgian", u"dutch-belgian", u"nlb"};
constexpr TextView englishLocales[] = {u"australian",
                                       u"ena",
                                       u"english-aus",
                                       u"canadian",
                                       u"enc",
                                       u"english-can",
                                       u"english",
                                       u"english-nz",
                                       u"enz",
                                       u"eng",
                                       u"english-uk",
                                       u"uk",
                                       u"american",
                                       u"american english",
                                       u"american-english",
                                       u"english-american",
                                       u"english-us",
                                       u"english-usa",
                                       u"enu",
                                       u"us",
                                       u"usa"};
// The three capitalised names never equal a lower-cased locale. They stay as they are: installations rely on
// the captions that follow from it.
constexpr TextView spanishLocales[] = {u"spain", u"Argentinen", u"Bolivien", u"Chile"};
constexpr TextView frenchLocales[] = {u"france"};

struct Row {
    std::span<const TextView> locales;
    LanguageButtonCaptions captions;
};

constexpr LanguageButtonCaptions englishCaptions = {u"German", u"Dutch", u"English", u"Spain", u"France"};

constexpr Row rows[] = {
    {germanLocales, {u"Deutsch", u"Niederländisch", u"Englisch", u"Spanisch", u"Französisch"}},
    {dutchLocales, {u"Duitse", u"Nederlands", u"Engels", u"Spain", u"France"}},
    {englishLocales, englishCaptions},
    {spanishLocales, {u"Duitse", u"Nederlands", u"Engels", u"Spaanse taal", u"Franse taal"}},
    {frenchLocales, {u"Allemande", u"Néelandaise", u"Anglais", u"Espagnol", u"Français"}},
};

} // namespace

const LanguageButtonCaptions& languageButtonCaptions(TextView countryAbbreviation)
{
    const Text locale = lowerCase(countryAbbreviation);
    for (const Row& row : rows) {
        if (std::find(row.locales.begin(), row.locales.end(), locale) != row.locales.end())
            return row.captions;
    }
    return englishCaptions;
}

} // namespace karvo
