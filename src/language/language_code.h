// The five languages and what belongs to each.
#pragma once

#include "program/text.h"

#include <array>
#include <optional>
#include <string_view>

namespace karvo
{

// The numbers are stored in the settings.
enum class LanguageCode { german = 1, dutch = 2, english = 3, spanish = 4, french = 5 };

inline constexpr std::array<LanguageCode, 5> allLanguages = {LanguageCode::german, LanguageCode::dutch,
                                                             LanguageCode::english, LanguageCode::spanish,
                                                             LanguageCode::french};

struct LanguageFiles {
    LanguageCode code;
    std::string_view menuItem;    // the item of the language menu
    std::string_view isoCode;     // as accepted on the command line
    std::string_view messageFile; // message table
    std::string_view menuFile;    // menu-caption table
    std::string_view captionFile; // control-caption table
};

const LanguageFiles& languageFiles(LanguageCode code);

// Nothing outside 1 to 5.
std::optional<LanguageCode> languageFromNumber(int number);

// The stored setting: nothing for an empty, unreadable or unknown value.
std::optional<LanguageCode> languageFromSetting(TextView stored);

// "1" to "5", or an ISO code such as "de", as typed on the command line.
std::optional<LanguageCode> languageFromName(std::string_view name);

} // namespace karvo
