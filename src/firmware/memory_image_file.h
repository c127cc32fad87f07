// A decoder's memory as an Intel-HEX file (docs/files.md, "Memory images").
#pragma once

#include "firmware/file_fault.h"
#include "firmware/memory_image.h"

#include <filesystem>
#include <span>
#include <variant>

namespace karvo
{

// Checks the whole file, from the first to the last line.
std::variant<MemoryImage, FileRefusal> parseMemoryImage(std::span<const std::uint8_t> content);

// Without the line with which an image for the boot loader begins: no decoder is sent it as firmware.
Bytes memoryImageContent(const MemoryImage& image);

struct NamedImage {
    std::filesystem::path path;
    MemoryImage image;
};

// Asks for a file and reads it. The dialog starts in the stored folder, else on drive C, else in `home`; the
// chosen file's folder is stored. Nothing when it was cancelled or, after a message, can not be read.
std::optional<NamedImage> openMemoryImage(Workbench& bench, const Text& title,
                                          const std::filesystem::path& home);

// Asks for a name, proposed as `name`, and saves. The path; nothing when it was cancelled or, after a
// message, failed.
std::optional<std::filesystem::path> saveMemoryImage(Workbench& bench, const MemoryImage& image,
                                                     const FileRequest& request);

// The dialog for saving, with its start folder as above.
FileRequest memoryImageRequest(const Workbench& bench, const Text& title, const std::filesystem::path& home);

} // namespace karvo
