// Any bytes as a language file: no crash, and entry 0 stays empty.
#include "fuzz_check.h"
#include "language/language_loader.h"
#include "support/memory_files.h"

#include <algorithm>

using namespace karvo;

namespace
{

class OneFile : public test::MemoryFiles
{
public:
    explicit OneFile(Bytes bytes) : bytes_(std::move(bytes)) {}
    std::optional<Bytes> readWhole(const std::filesystem::path&, std::size_t) override { return bytes_; }
    bool exists(const std::filesystem::path&) override { return true; }

private:
    Bytes bytes_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    OneFile files(Bytes(data, data + size));
    static LanguageTables tables; // made once: thousands of texts
    fuzz::check(!loadLanguage(tables, LanguageCode::german, "folder", files).missing);
    fuzz::check(tables.messages[0].empty() && tables.menu[0].empty() && tables.captions[0].empty());
    const auto lines = std::min<std::ptrdiff_t>(1000, std::count(data, data + size, '\n') + 1);
    for (std::ptrdiff_t number = 0; number <= lines; ++number) {
        const auto caption = tables.caption(static_cast<Caption>(number));
        fuzz::check(caption.find(u'\t') == Text::npos);
        fuzz::check(caption.size() <= tables.captions[static_cast<std::size_t>(number)].size());
    }
    return 0;
}
