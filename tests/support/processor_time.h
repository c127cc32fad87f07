// What this process has cost the processor so far: on Windows std::clock() tells the time of the day.
#pragma once

#include <chrono>

#ifdef _WIN32
#include <windows.h>
#else
#include <ctime>
#endif

namespace karvo::test
{

inline std::chrono::milliseconds processorTime()
{
#ifdef _WIN32
    FILETIME started{}, ended{}, system{}, user{};
    ::GetProcessTimes(::GetCurrentProcess(), &started, &ended, &system, &user);
    return std::chrono::milliseconds((system.dwLowDateTime + user.dwLowDateTime) / 10'000);
#else
    return std::chrono::milliseconds(std::clock() * 1000 / CLOCKS_PER_SEC);
#endif
}

} // namespace karvo::test
