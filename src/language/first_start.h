// The first start: in which language the five languages are offered, and what is said when none is chosen.
#pragma once

#include "program/text.h"

#include <array>

namespace karvo
{

// Captions of the German, Dutch, English, Spanish and French button, in this order.
using LanguageButtonCaptions = std::array<TextView, 5>;

// By the locale's country abbreviation as the operating system gives it, in any letter case.
const LanguageButtonCaptions& languageButtonCaptions(TextView countryAbbreviation);

// Shown before the program ends because no language was chosen.
inline constexpr TextView noLanguageChosenText =
    u"Programm wird beendet !\r\n\r\nProgramma sluit !\r\n\r\nProgram will be closed !";

} // namespace karvo
