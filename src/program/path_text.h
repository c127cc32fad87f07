// Paths in messages.
#pragma once

#include "program/text.h"

#include <filesystem>

namespace karvo
{

// As people read it. A name that is no valid Unicode shows a replacement instead of throwing.
Text pathText(const std::filesystem::path& path);

} // namespace karvo
