#include "program/clock.h"

namespace karvo
{

namespace
{

Text twoDigits(int number)
{
    return joined({number < 10 ? u"0" : u"", textFromNumber(number)});
}

} // namespace

Text dateText(const DateTime& time)
{
    return textFromNumber(time.year) + u"-" + twoDigits(time.month) + u"-" + twoDigits(time.day);
}

Text timeText(const DateTime& time)
{
    return twoDigits(time.hour) + u"-" + twoDigits(time.minute) + u"-" + twoDigits(time.second);
}

Text momentText(const DateTime& time)
{
    return dateText(time) + u" " + twoDigits(time.hour) + u":" + twoDigits(time.minute);
}

} // namespace karvo
