// The program's main job: read the decoder and show its CVs in words.
#pragma once

#include "link/read.h"
#include "workbench/workbench.h"

#include <optional>

namespace karvo
{

// Who asked for the read.
enum class ReadStarter { button, other };

// Reads the decoder and makes the list from it. The chosen CV stays chosen where it is the same vehicle once
// more; else the first one is chosen. Whatever goes wrong has been shown; the list on the bench is unchanged
// then, as it is after a stop. Nothing when another operation has the line, or when the decoder was read but
// its description could not be.
std::optional<ReadEnd> readIntoList(Workbench& bench, ReadStarter starter);

} // namespace karvo
