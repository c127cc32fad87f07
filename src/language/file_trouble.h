// Why a file or a folder could not be had, in the words of the language in use.
#pragma once

#include "language/language_tables.h"
#include "program/files.h"

#include <system_error>

namespace karvo
{

// To stand in a sentence, without a full stop: "disk full". Where the language has no words for it, the
// system's.
Text fileTroubleText(const std::error_code& error, const LanguageTables& texts, const Files& files);

} // namespace karvo
