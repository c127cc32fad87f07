// Reads the file of a function sheet, the program's or a person's own (layout in docs/files.md).
#pragma once

#include "editors/function_sheet.h"
#include "language/language_tables.h"

#include <variant>

namespace karvo
{

// Why a file is no sheet, with the line that shows it (1 is the first).
struct SheetFault {
    enum class Kind {
        noSheet,     // the first line that tells something is not "sheet;" and a name
        unknownWord, // a line begins with a word that means nothing
        wrongName,   // no name of 1 to 40 letters, digits and "_"
        wrongNumber, // no CV from 1 to 256, no weight of a bit, no value from 0 to 255
        wrongValues, // no values like "CV102=30 CV103=10"
        unknownModel,
        unknownLanguage,
        emptyText,
        misplaced, // what the line belongs to is missing
        repeated,  // a CV or a bit for the second time
        tooLong,   // more lines than a sheet can have
        noTitle,
        nothingInIt // neither a field nor a sentence
    };
    Kind kind;
    int line;
    Text word = {}; // what is meant, from the line
};

inline constexpr int sheetLineLimit = 1000;

std::variant<FunctionSheet, SheetFault> parseSheet(std::span<const std::uint8_t> content);

// "Line 7: there is no model \"KV09\"."
Text faultText(const SheetFault& fault, const LanguageTables& texts);

} // namespace karvo
