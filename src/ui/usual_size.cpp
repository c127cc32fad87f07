#include "ui/usual_size.h"

#include <QScreen>
#include <QWidget>

namespace karvo
{

namespace
{

constexpr QSize usualFrame(8, 40); // what a frame takes at most; it is not known before the window is shown

} // namespace

void resizeToUsual(QWidget& window, QSize usual)
{
    window.resize(usual.boundedTo(window.screen()->availableSize() - usualFrame));
}

} // namespace karvo
