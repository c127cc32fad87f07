#include "cvdata/language_suffix.h"

#include <algorithm>

namespace karvo
{

std::string languageSuffix(SuffixForm form, LanguageCode language)
{
    if (language == LanguageCode::german)
        return {};
    std::string code(languageFiles(language).isoCode);
    if (form == SuffixForm::capital)
        std::transform(code.begin(), code.end(), code.begin(),
                       [](char letter) { return static_cast<char>(letter - 'a' + 'A'); });
    return form == SuffixForm::attached ? code : "_" + code;
}

} // namespace karvo
