// Keeps the computer awake by the operating system's own means.
#pragma once

#include "program/stay_awake.h"

#include <QProcess>

namespace karvo
{

// Windows: the thread's execution state. Elsewhere `systemd-inhibit`, where it is installed, as a child that
// holds the lock until end(), or until this program has ended in whatever way.
class SystemStayAwake : public StayAwake
{
public:
    ~SystemStayAwake() override { end(); }

    void begin(const Text& why) override;
    void end() override;

private:
#ifndef Q_OS_WIN
    QProcess inhibitor_;
#endif
};

} // namespace karvo
