// Any bytes as a name in an archive: what is taken stays below the target folder and is the same file on
// every system, and each of its parts would be taken alone too.
#include "firmware/archive_names.h"
#include "fuzz_check.h"

#include <cstdint>
#include <string>

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string name(reinterpret_cast<const char*>(data), size);
    const auto path = pathOfEntry(name);
    if (!path)
        return 0;
    fuzz::check(path->is_relative() && !path->empty());
    fuzz::check(path->lexically_normal() == *path);
    const auto below = (std::filesystem::path("target") / *path).lexically_normal();
    fuzz::check(below.begin() != below.end() && *below.begin() == "target");
    for (const auto& part : *path) {
        const auto utf8 = part.u8string();
        fuzz::check(isPlainFileName(std::string(utf8.begin(), utf8.end())));
    }
    fuzz::check(name.find(':') == std::string::npos && name.find('\0') == std::string::npos);
    return 0;
}
