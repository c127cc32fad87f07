// Comparisons and changes in many files, as lines or as JSON.
#pragma once

#include "cvdata/batch_change.h"
#include "cvdata/comparison.h"

#include <vector>

namespace karvo
{

// As lines: both names, what is not equal, and the counts. As JSON: every line.
void printComparison(const Comparison& comparison, const LanguageTables& texts, bool json);

// For each file what each CV changes from and to, or why it does not.
void printBatch(const std::vector<BatchFile>& batch, const LanguageTables& texts, bool json);

} // namespace karvo
