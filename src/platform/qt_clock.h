#pragma once

#include "program/clock.h"

class QDateTime;

namespace karvo
{

// In local time.
DateTime dateTime(const QDateTime& moment);

class QtClock : public Clock
{
public:
    DateTime now() const override;
};

} // namespace karvo
