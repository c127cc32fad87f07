#include "platform/console.h"

#include "platform/win32_wide.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace karvo
{

namespace
{

HANDLE handleOf(StandardStream stream)
{
    switch (stream) {
    case StandardStream::in:
        return ::GetStdHandle(STD_INPUT_HANDLE);
    case StandardStream::out:
        return ::GetStdHandle(STD_OUTPUT_HANDLE);
    case StandardStream::err:
        break;
    }
    return ::GetStdHandle(STD_ERROR_HANDLE);
}

std::error_code lastCError()
{
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

// A console may refuse more than this at once.
constexpr std::size_t mostUnits = 8192;

std::error_code show(HANDLE console, const std::wstring& text)
{
    for (std::size_t at = 0; at < text.size();) {
        DWORD written = 0;
        const auto units = static_cast<DWORD>(std::min(text.size() - at, mostUnits));
        if (::WriteConsoleW(console, text.data() + at, units, &written, nullptr) == FALSE)
            return {static_cast<int>(::GetLastError()), std::system_category()};
        at += written;
    }
    return {};
}

} // namespace

// NUL counts as a terminal for the C library.
bool isTerminal(StandardStream stream)
{
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode) != FALSE;
}

std::error_code print(StandardStream stream, const std::string& utf8)
{
    if (isTerminal(stream))
        return show(handleOf(stream), wide(utf8));
    errno = 0;
    // The library's text mode makes CR LF of each line end.
    auto* const file = stream == StandardStream::out ? stdout : stderr;
    const bool isDone = std::fwrite(utf8.data(), 1, utf8.size(), file) == utf8.size();
    return isDone ? std::error_code() : lastCError();
}

std::error_code flushOutput()
{
    errno = 0;
    return std::fflush(stdout) == 0 ? std::error_code() : lastCError();
}

// Ctrl-C ends the read itself, with nothing.
std::optional<Text> typedLine(const InterruptNotice& interrupt)
{
    constexpr char16_t endOfInput = 0x1A; // Ctrl-Z
    Text line;
    while (line.find(u'\n') == Text::npos) {
        std::array<wchar_t, 256> typed{};
        DWORD count = 0;
        if (::ReadConsoleW(handleOf(StandardStream::in), typed.data(), static_cast<DWORD>(typed.size()),
                           &count, nullptr) == FALSE ||
            count == 0 || interrupt.times() != 0)
            return std::nullopt;
        line.append(typed.begin(), typed.begin() + count);
    }
    if (line.front() == endOfInput)
        return std::nullopt;
    return line.substr(0, line.find_first_of(u"\r\n"));
}

// Here handles are no small numbers that are given out again.
void holdStandardStreams()
{
}

} // namespace karvo
