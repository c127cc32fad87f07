#pragma once

#include "program/locale_info.h"

#include <QLocale>

namespace karvo
{

// The system's own abbreviation on Windows, elsewhere that of the territory of the user's locale.
class QtLocaleInfo : public LocaleInfo
{
public:
    Text countryAbbreviation() const override;
};

// Three letters as ISO 3166 has them, for the countries of Europe, the Americas, Australia and New Zealand;
// empty for all others.
TextView countryAbbreviation(QLocale::Territory territory);

} // namespace karvo
