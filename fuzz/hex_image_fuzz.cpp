// Any bytes as a HEX file: refused with a line of the file, or an image whose pages hold all of it.
#include "firmware/hex_image.h"
#include "fuzz_check.h"

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parsed = parseHexImage({data, size});
    if (const auto* const refusal = std::get_if<FileRefusal>(&parsed)) {
        fuzz::check(refusal->line >= 1 && refusal->line <= static_cast<int>(size) + 1);
        return 0;
    }
    const auto& image = std::get<HexImage>(parsed);
    fuzz::check(!image.data.empty() && image.data.size() <= 32768);
    const auto pages = image.pages();
    fuzz::check(pages.size() == (image.data.size() + 127) / 128);
    for (std::size_t i = 0; i < pages.size() * 128; ++i)
        fuzz::check(pages[i / 128][i % 128] == (i < image.data.size() ? image.data[i] : 0xFF));
    return 0;
}
