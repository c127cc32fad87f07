// What a fuzz target holds its subject to: a broken promise ends the process.
#pragma once

#include <cstdlib>

namespace karvo::fuzz
{

inline void check(bool promise)
{
    if (!promise)
        std::abort();
}

} // namespace karvo::fuzz
