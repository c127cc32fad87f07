#include "platform/qt_clock.h"

#include <QDateTime>

namespace karvo
{

DateTime QtClock::now() const
{
    const QDateTime local = QDateTime::currentDateTime();
    const QDate date = local.date();
    const QTime time = local.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

} // namespace karvo
