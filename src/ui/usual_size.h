// The size in which a window opens.
#pragma once

#include <QSize>

class QWidget;

namespace karvo
{

// As large as usual, as far as the screen has room for that and for the window's frame.
void resizeToUsual(QWidget& window, QSize usual);

} // namespace karvo
