#include "program/path_text.h"

namespace karvo
{

Text pathText(std::filesystem::path path)
{
    const auto& shown = path.make_preferred().native();
    if constexpr (sizeof(std::filesystem::path::value_type) == 2) {
        return Text(shown.begin(), shown.end());
    } else {
        return textFromUtf8({reinterpret_cast<const char*>(shown.data()), shown.size()});
    }
}

} // namespace karvo
