// Loads a language's three tables from the program folder.
#pragma once

#include "language/language_code.h"
#include "language/language_tables.h"
#include "program/files.h"

#include <filesystem>
#include <string_view>

namespace karvo
{

// Reads the message, menu and caption file of a language, in this order, into the tables. Entries beyond a
// file's last line keep their old text; lines beyond a table are ignored. Returns the name of the first file
// that could not be read (files before it are loaded by then), or nothing on success.
std::optional<std::string_view> loadLanguage(LanguageTables& tables, LanguageCode code,
                                             const std::filesystem::path& programFolder, Files& files);

// The fixed text that is shown before the program ends for want of a language file.
Text missingLanguageFileText(std::string_view fileName);

} // namespace karvo
