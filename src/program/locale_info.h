// What the operating system says of the user's locale.
#pragma once

#include "program/text.h"

namespace karvo
{

class LocaleInfo
{
public:
    virtual ~LocaleInfo() = default;

    // The three-letter abbreviation of the locale's country, such as "DEU", "NLD", "FRA"; empty when unknown.
    virtual Text countryAbbreviation() const = 0;
};

} // namespace karvo
