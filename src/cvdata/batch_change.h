// The same change of CVs in many CV list files.
#pragma once

#include "cvdata/cv_change.h"
#include "cvdata/list_file.h"
#include "language/language_tables.h"
#include "program/files.h"

#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace karvo
{

enum class BatchRefusal {
    none,
    notInList,     // the file does not have the CV
    outsideLimits, // of this file's model
    cannotRead,
    tooLarge, // for a CV list
    notAList,
    changedMeanwhile, // the file is not as it was when the preview was made
    cannotSave
};

struct BatchRow {
    int cv;
    Text oldValue; // empty when the file has none
    int newValue;
    BatchRefusal refusal = BatchRefusal::none;
    int lowerLimit = 0; // of the file's model
    int upperLimit = 255;
};

struct BatchFile {
    std::filesystem::path path;
    std::vector<BatchRow> rows;
    BatchRefusal refusal = BatchRefusal::none; // of the file as a whole
    Text reason;                               // why, with cannotSave
    bool done = false;                         // the changes are in the file

    // A file takes all of the changes or none.
    bool isRefused() const;
    bool changesAnything() const;
};

// What the changes would do to each file, each once; nothing is written.
std::vector<BatchFile> previewBatch(Files& files, std::span<const std::filesystem::path> paths,
                                    std::span<const CvChange> changes);

// Writes the files that are not refused, each whole or not at all. A file that fails says why and is left as
// it was; the others are done. Nothing in a file changes but the values.
void applyBatch(Files& files, const LanguageTables& texts, std::span<BatchFile> batch);

// Why a row or a file is refused; empty when it is not.
Text refusalText(const BatchRow& row, const LanguageTables& texts);
Text refusalText(const BatchFile& file, const LanguageTables& texts);

} // namespace karvo
