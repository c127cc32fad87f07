// Comparisons and changes in many files, as lines or as JSON.
#pragma once

#include "cli/output.h"
#include "cvdata/batch_change.h"
#include "cvdata/comparison.h"

#include <vector>

namespace karvo
{

// As lines: both names, what is not equal, and the counts. As JSON: every line.
void printComparison(Output& output, const Comparison& comparison, const LanguageTables& texts);

// For each file what each CV changes from and to; why it does not, on standard error.
void printBatch(Output& output, const std::vector<BatchFile>& batch, const LanguageTables& texts);

} // namespace karvo
