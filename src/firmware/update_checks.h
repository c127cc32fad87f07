// What is told before an update is sent, and what is asked about.
#pragma once

#include "firmware/update_file.h"
#include "link/type_code.h"

#include <filesystem>

namespace karvo
{

// The items of the file's header in one line.
Text updateHeaderText(const LanguageTables& texts, const UpdateFile& file);

// What in the file's form is unusual, though it can be sent, each with its line: short records before the
// last, no line end behind the last line, more than 4,096 records. Empty when there is nothing.
std::vector<Text> unusualIn(const LanguageTables& texts, const UpdateFile& file);

// Where the header or the file's name speaks of another model than the decoder's: KV07, KV08
// or receiver. A text that names none, or the decoder's too, is no finding.
std::vector<Text> otherModelsIn(const LanguageTables& texts, const UpdateFile& file,
                                const std::filesystem::path& path, TypeCode typeCode);

} // namespace karvo
