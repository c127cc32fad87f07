// What Windows gives by handles, given back by itself.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <memory>

namespace karvo
{

struct CloseWin32Handle {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};

// Null where there is none; never INVALID_HANDLE_VALUE.
using Win32Handle = std::unique_ptr<void, CloseWin32Handle>;

// Stays signalled until it is reset.
inline Win32Handle makeLastingEvent()
{
    return Win32Handle(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

// Lets one wait through.
inline Win32Handle makeSingleEvent()
{
    return Win32Handle(::CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

} // namespace karvo
