#include "ui/usual_size.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr QSize usualFrame(16, 40); // what a frame takes at most; it is not known before the window is shown

QScreen& screenOf(const QWidget& window)
{
    QScreen* const there = QGuiApplication::screenAt(window.geometry().center());
    return there != nullptr ? *there : *QGuiApplication::primaryScreen();
}

} // namespace

QSize roomOnScreen(const QWidget& window)
{
    return window.screen()->availableSize() - usualFrame;
}

void resizeToUsual(QWidget& window, QSize usual)
{
    window.resize(usual.boundedTo(roomOnScreen(window)));
}

void keepOnScreen(QWidget& window)
{
    if (window.isMaximized() || window.isFullScreen())
        return;
    const QRect room = screenOf(window).availableGeometry();
    window.resize(window.size().boundedTo(room.size() - usualFrame));
    const QSize taken = window.size() + usualFrame;
    const QPoint last = room.topLeft() + QPoint(room.width() - taken.width(), room.height() - taken.height());
    const QPoint inside(std::clamp(window.x(), room.x(), std::max(room.x(), last.x())),
                        std::clamp(window.y(), room.y(), std::max(room.y(), last.y())));
    if (inside != window.pos())
        window.move(inside);
}

} // namespace karvo
