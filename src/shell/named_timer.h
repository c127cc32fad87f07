// A timer that is found by its name among the window's own.
#pragma once

#include <QTimer>
#include <QWidget>

#include <chrono>

namespace karvo
{

inline QTimer* newTimer(const char* name, std::chrono::milliseconds interval, QWidget& window)
{
    auto* const timer = new QTimer(&window);
    timer->setObjectName(QString::fromLatin1(name));
    timer->setInterval(interval);
    return timer;
}

} // namespace karvo
