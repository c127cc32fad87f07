#include "program/path_text.h"

namespace karvo
{

Text pathText(const std::filesystem::path& path)
{
    if constexpr (sizeof(std::filesystem::path::value_type) == 2) {
        return Text(path.native().begin(), path.native().end());
    } else {
        const auto& bytes = path.native();
        return textFromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
}

} // namespace karvo
