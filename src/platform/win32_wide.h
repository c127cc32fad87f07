// Text in the wide characters that Windows takes.
#pragma once

#include "program/text.h"

#include <string>
#include <string_view>

namespace karvo
{

inline std::wstring wide(TextView text)
{
    return {text.begin(), text.end()};
}

inline std::wstring wide(std::string_view utf8)
{
    return wide(TextView(textFromUtf8(utf8)));
}

} // namespace karvo
