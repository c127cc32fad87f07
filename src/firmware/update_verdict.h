// What the interface's replies say of an update.
#pragma once

#include "program/text.h"

namespace karvo
{

// Each reply of an update begins with 6 where the interface has taken what it was sent. Notes the first that
// does not, and counts them.
class UpdateVerdict
{
public:
    // `record` from 1; 0 for what announces the update.
    void note(std::size_t record, const Bytes& reply);

    bool isConfirmed() const { return refusals_ == 0; }
    std::size_t refusals() const { return refusals_; }
    std::size_t firstRefused() const { return firstRefused_; }
    const Bytes& firstRefusal() const { return firstRefusal_; }

private:
    std::size_t refusals_ = 0;
    std::size_t firstRefused_ = 0;
    Bytes firstRefusal_;
};

} // namespace karvo
