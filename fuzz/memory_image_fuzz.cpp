// Any bytes as a memory image: refused with a line of the file, or bytes that come back the same from what is
// saved of them.
#include "firmware/memory_image_file.h"
#include "fuzz_check.h"

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parsed = parseMemoryImage({data, size});
    if (const auto* const refusal = std::get_if<FileRefusal>(&parsed)) {
        fuzz::check(refusal->line >= 1 && refusal->line <= static_cast<int>(size) + 1);
        return 0;
    }
    const auto& image = std::get<MemoryImage>(parsed);
    fuzz::check(image.size() >= 1 && image.size() <= memorySize);
    const auto again = parseMemoryImage(memoryImageContent(image));
    fuzz::check(std::holds_alternative<MemoryImage>(again));
    for (std::size_t address = 0; address < memorySize; ++address)
        fuzz::check(std::get<MemoryImage>(again).at(address) == image.at(address));
    return 0;
}
