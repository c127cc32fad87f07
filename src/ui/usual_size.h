// How large a window may be, and where.
#pragma once

#include <QSize>

class QWidget;

namespace karvo
{

// What the window's screen has for its content: the frame and the system's own bars are taken off.
QSize roomOnScreen(const QWidget& window);

// As large as usual, as far as there is room.
void resizeToUsual(QWidget& window, QSize usual);

// The window with its frame, whole on a screen that is there. One that fills its screen is left to it.
void keepOnScreen(QWidget& window);

} // namespace karvo
