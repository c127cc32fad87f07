#include "language/language_code.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::array<LanguageFiles, 5> table = {{
    {LanguageCode::german, "mnu_german", "de", "Deutsch_var.txt", "Deutsch_mnu.txt", "Deutsch_cap.txt"},
    {LanguageCode::dutch, "mnu_dutch", "nl", "Dutch_var.txt", "Dutch_mnu.txt", "Dutch_cap.txt"},
    {LanguageCode::english, "mnu_english", "en", "English_var.txt", "English_mnu.txt", "English_cap.txt"},
    {LanguageCode::spanish, "mnu_spanisch", "es", "Spanisch_var.txt", "Spanisch_mnu.txt", "Spanisch_cap.txt"},
    {LanguageCode::french, "mnu_franz", "fr", "Franz_var.txt", "Franz_mnu.txt", "Franz_cap.txt"},
}};

} // namespace

const LanguageFiles& languageFiles(LanguageCode code)
{
    return table[static_cast<std::size_t>(code) - 1];
}

std::optional<LanguageCode> languageFromNumber(int number)
{
    if (number < 1 || number > static_cast<int>(table.size()))
        return std::nullopt;
    return static_cast<LanguageCode>(number);
}

std::optional<LanguageCode> languageFromSetting(TextView stored)
{
    const auto number = numberFromText(stored);
    return number ? languageFromNumber(*number) : std::nullopt;
}

std::optional<LanguageCode> languageFromName(std::string_view name)
{
    const auto byIso = std::find_if(table.begin(), table.end(),
                                    [name](const LanguageFiles& files) { return files.isoCode == name; });
    if (byIso != table.end())
        return byIso->code;
    return languageFromSetting(textFromUtf8(name));
}

} // namespace karvo
