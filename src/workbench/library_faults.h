// What the person is told of files of the program folder.
#pragma once

#include "cvdata/description_library.h"
#include "program/prompts.h"
#include "workbench/workbench.h"

#include <span>

namespace karvo
{

// Says that a file can not be opened.
void showCannotOpen(Prompts& prompts, const LanguageTables& texts, const std::filesystem::path& path);

// In their order. Where the program works on without what is wrong, a file is told of once in a run: each
// read and each list would tell of it again.
void tellFaults(Workbench& bench, std::span<const LibraryFault> faults);

// A description for something beside the set on the bench: what is wrong is told, but for lines that were
// left out. Nothing when it can not be read.
std::optional<Description> describeOrTell(Workbench& bench, const std::string& fileName,
                                          const DecoderProfile& profile = {});

} // namespace karvo
