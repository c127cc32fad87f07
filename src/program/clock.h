// What time it is, for the names of files.
#pragma once

#include "program/text.h"

namespace karvo
{

// Local time.
struct DateTime {
    int year = 0;
    int month = 0; // 1 to 12
    int day = 0;   // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

class Clock
{
public:
    virtual ~Clock() = default;

    virtual DateTime now() const = 0;
};

// "2026-11-22": sorts by date, and may stand in the name of a file.
Text dateText(const DateTime& time);

// "22-05-09", likewise.
Text timeText(const DateTime& time);

// "2026-11-22 22:05", for people.
Text momentText(const DateTime& time);

} // namespace karvo
