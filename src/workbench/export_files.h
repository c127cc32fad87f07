// What is saved of the set on the bench beside list files: for other programs, and to read.
#pragma once

#include "program/clock.h"
#include "workbench/workbench.h"

#include <optional>

namespace karvo
{

enum class ExportForm {
    text,           // the report
    csv,            // CsvForm::plain
    csvClosedHeader // CsvForm::closedHeader
};

// Saves whole or not at all. False after a message with the path and the system's words.
bool saveContent(Workbench& bench, const std::filesystem::path& path, const Bytes& content);

// The set on the bench in this form.
Bytes exportedContent(const ProgramState& state, ExportForm form);

// Asks for a file name, proposed with the vehicle's name and the date, and saves the set under it. The path;
// nothing when it was cancelled or, after a message, failed.
std::optional<std::filesystem::path> exportSet(Workbench& bench, ExportForm form, const Text& title,
                                               const DateTime& now);

} // namespace karvo
