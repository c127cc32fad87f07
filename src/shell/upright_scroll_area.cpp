#include "shell/upright_scroll_area.h"

#include <QEvent>
#include <QStyle>

namespace karvo
{

UprightScrollArea::UprightScrollArea(QWidget* content, QWidget* parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("CurrentCvArea"));
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
}

QSize UprightScrollArea::minimumSizeHint() const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return {widget()->minimumSizeHint().width() + bar, 6 * fontMetrics().height()};
}

bool UprightScrollArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

} // namespace karvo
