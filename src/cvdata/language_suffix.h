// How the names of description and expert files tell their language.
#pragma once

#include "language/language_code.h"

#include <string>

namespace karvo
{

enum class SuffixForm {
    attached, // "kv07nl"
    small,    // "receiver_nl"
    capital   // "an07_NL"
};

// Nothing for German.
std::string languageSuffix(SuffixForm form, LanguageCode language);

} // namespace karvo
