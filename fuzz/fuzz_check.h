// What a fuzz target holds its subject to: a broken promise ends the process.
#pragma once

#include <cstddef>
#include <cstdlib>

namespace karvo::fuzz
{

inline void check(bool promise)
{
    if (!promise)
        std::abort();
}

// Whether an input is of the quarter that also goes through what walks over whole tables and writes whole
// files: that costs as much as many inputs that are only read.
inline bool isForWholeTables(std::size_t size)
{
    return size % 4 == 0;
}

} // namespace karvo::fuzz
