// Which names of an archive may become files: those that mean the same file below the target folder on every
// system.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace karvo
{

// A name without folders that each system takes for a plain file: no separators, drives, streams, wildcards,
// control characters, reserved device names, no dot or blank at its end, at most 255 bytes of sound UTF-8.
bool isPlainFileName(std::string_view name);

// Whether a folder's name is that of the target folder itself: "./".
bool isHere(std::string_view name);

// The path below the target folder; nothing for a name that leads elsewhere or that some system refuses. Both
// slashes separate; one at the end is that of a folder. "./" before a name says nothing.
std::optional<std::filesystem::path> pathOfEntry(std::string_view name);

} // namespace karvo
