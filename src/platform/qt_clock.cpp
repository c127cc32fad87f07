#include "platform/qt_clock.h"

#include <QDateTime>

namespace karvo
{

DateTime dateTime(const QDateTime& moment)
{
    const QDateTime local = moment.toLocalTime();
    const QDate date = local.date();
    const QTime time = local.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

DateTime QtClock::now() const
{
    return dateTime(QDateTime::currentDateTime());
}

} // namespace karvo
