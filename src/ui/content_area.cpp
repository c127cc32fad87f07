#include "ui/content_area.h"

#include "ui/usual_size.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>
#include <QSlider>
#include <QStyle>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int fewestLines = 6;

} // namespace

ContentArea::ContentArea(QWidget* content, QWidget* parent) : QScrollArea(parent)
{
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    // Also where the keyboard comes from a button below, which does not ask the area.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now != nullptr && widget()->isAncestorOf(now))
            ensureWidgetVisible(now);
    });
}

QSize ContentArea::sizeHint() const
{
    return widget()->sizeHint().expandedTo({minimumSizeHint().width(), 0});
}

QSize ContentArea::minimumSizeHint() const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const QSize content = widget()->minimumSizeHint();
    return {std::min(content.width() + bar, roomOnScreen(*window()).width() - 2 * bar),
            std::min(content.height(), fewestLines * fontMetrics().height())};
}

void ContentArea::guardFromWheel()
{
    for (QWidget* const control : widget()->findChildren<QWidget*>()) {
        if (qobject_cast<QAbstractSpinBox*>(control) == nullptr &&
            qobject_cast<QComboBox*>(control) == nullptr && qobject_cast<QSlider*>(control) == nullptr)
            continue;
        if (control->focusPolicy() == Qt::WheelFocus)
            control->setFocusPolicy(Qt::StrongFocus);
        control->removeEventFilter(this);
        control->installEventFilter(this);
    }
}

bool ContentArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    const auto* const control = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && control != nullptr && control != widget() && !control->hasFocus() &&
        verticalScrollBar()->maximum() > 0) {
        event->ignore(); // so that it goes on to what lies below the control
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace karvo
