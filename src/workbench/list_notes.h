// What was not as it should be in a list file that was opened all the same.
#pragma once

#include "cvdata/list_file.h"
#include "language/language_tables.h"

#include <filesystem>

namespace karvo
{

// One text that names the file and, for each kind of fault, the lines. Empty for a file without faults.
Text listNotes(const ListFile& list, const std::filesystem::path& path, const LanguageTables& texts);

} // namespace karvo
