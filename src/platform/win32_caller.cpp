#include "platform/caller.h"

#include "platform/console.h"
#include "platform/win32_wide.h"

#include <memory>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <shellapi.h>

namespace karvo
{

namespace
{

bool isRedirected(DWORD stream)
{
    const DWORD kind = ::GetFileType(::GetStdHandle(stream));
    return kind == FILE_TYPE_DISK || kind == FILE_TYPE_PIPE;
}

// False where the program was not called from a console.
bool showOnConsole(const std::wstring& text)
{
    if (::AttachConsole(ATTACH_PARENT_PROCESS) == FALSE)
        return false;
    const HANDLE console =
        ::CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD written = 0;
    const bool isDone =
        ::WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != FALSE;
    ::CloseHandle(console);
    ::FreeConsole();
    return isDone;
}

} // namespace

std::vector<std::string> argumentsOf(int /*count*/, char** /*values*/)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> words(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        const std::wstring_view word = words.get()[i];
        arguments.push_back(utf8FromText(Text(word.begin(), word.end())));
    }
    return arguments;
}

void tellCaller(CallerNews news, const std::string& lines)
{
    const bool isFault = news == CallerNews::fault;
    if (isRedirected(isFault ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE))
        print(isFault ? StandardStream::err : StandardStream::out, lines);
    else if (isFault || !showOnConsole(wide(lines)))
        ::MessageBoxW(nullptr, wide(lines).c_str(), L"Karvo",
                      isFault ? MB_OK | MB_ICONWARNING : MB_OK | MB_ICONINFORMATION);
}

} // namespace karvo
