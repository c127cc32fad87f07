#pragma once

#include "program/clock.h"

namespace karvo
{

class QtClock : public Clock
{
public:
    DateTime now() const override;
};

} // namespace karvo
