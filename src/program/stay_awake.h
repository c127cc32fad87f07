// Keeping the computer from going to sleep by itself while a decoder must not be left half written.
#pragma once

#include "program/text.h"

namespace karvo
{

// Where the system offers no such thing, or refuses it, nothing happens: the work goes on as it would have.
class StayAwake
{
public:
    virtual ~StayAwake() = default;

    // `why`: in words, for whoever asks the system what keeps it awake.
    virtual void begin(const Text& why) = 0;

    // After a begin(); the computer may sleep again.
    virtual void end() = 0;
};

} // namespace karvo
