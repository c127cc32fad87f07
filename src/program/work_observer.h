// Whoever watches work that lasts, and may end it.
#pragma once

#include <cstdint>

namespace karvo
{

class WorkObserver
{
public:
    virtual ~WorkObserver() = default;

    // In the work's own unit: bytes, records. A total of 0: nobody knows it.
    virtual void showProgress(std::uint64_t /*done*/, std::uint64_t /*total*/) {}

    // Asked where the work can end cleanly: true ends it.
    virtual bool stopRequested() = 0;
};

} // namespace karvo
