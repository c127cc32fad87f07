#include "platform/system_words.h"

#include <array>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace karvo
{

namespace
{

// "Access is denied.\r\n" without what ends it.
Text sentence(std::wstring_view words)
{
    const auto end = words.find_last_not_of(L". \r\n");
    words = words.substr(0, end == std::wstring_view::npos ? 0 : end + 1);
    return Text(words.begin(), words.end());
}

} // namespace

Text systemWords(const std::error_code& error)
{
    // What the C library tells is English.
    if (error.category() != std::system_category())
        return textFromUtf8(error.message());
    std::array<wchar_t, 512> words{};
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
        static_cast<DWORD>(error.value()), 0, words.data(), static_cast<DWORD>(words.size()), nullptr);
    const Text told = sentence({words.data(), length});
    return told.empty() ? u"Windows " + textFromNumber(error.value()) : told;
}

} // namespace karvo
