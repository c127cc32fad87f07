// Paths in messages.
#pragma once

#include "program/text.h"

#include <filesystem>

namespace karvo
{

// As people read it, with the system's own separators. A name that is no valid Unicode shows a replacement
// instead of throwing.
Text pathText(std::filesystem::path path);

} // namespace karvo
