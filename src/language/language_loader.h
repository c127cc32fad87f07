// Loads a language's three tables from the program folder.
#pragma once

#include "language/language_code.h"
#include "language/language_tables.h"
#include "program/files.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace karvo
{

// Names of files.
struct LoadedLanguage {
    std::optional<std::string_view> missing;
    std::vector<std::string_view> damaged; // empty, or no text files; read like the others
};

// Reads the message, menu and caption file of a language, in this order, into the tables. Entries beyond a
// file's last line keep their old text; lines beyond a table are ignored. A missing file ends it; those
// before it are loaded by then.
LoadedLanguage loadLanguage(LanguageTables& tables, LanguageCode code,
                            const std::filesystem::path& programFolder, Files& files);

// The fixed text that is shown before the program ends for want of a language file.
Text missingLanguageFileText(std::string_view fileName);

// What to tell of a damaged file: in the language where its own messages are sound, else in English.
Text damagedLanguageFileText(const LanguageTables& texts, const LoadedLanguage& loaded, LanguageCode code);

} // namespace karvo
