// Reading a firmware file from the disk.
#pragma once

#include "workbench/workbench.h"

namespace karvo
{

// No firmware is near that size; a file up to it is read, so that what is wrong with it can be told.
inline constexpr std::size_t firmwareFileLimit = std::size_t{32} * 1024 * 1024; // bytes

// The whole file; nothing, after a message, when it can not be opened or is larger than any firmware.
std::optional<Bytes> readFirmwareFile(Workbench& bench, const std::filesystem::path& path);

} // namespace karvo
