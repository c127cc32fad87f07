// Any bytes as an update file: refused with a line of the file, or one that can be sent.
#include "firmware/update_file.h"
#include "fuzz_check.h"

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parsed = parseUpdateFile({data, size});
    if (const auto* const refusal = std::get_if<FileRefusal>(&parsed)) {
        fuzz::check(refusal->line >= 1 && refusal->line <= static_cast<int>(size) + 1);
        return 0;
    }
    const auto& file = std::get<UpdateFile>(parsed);
    fuzz::check(!file.records.empty());
    fuzz::check(file.start.size() == 2 && !file.header.empty() && file.header.size() <= 6);
    return 0;
}
