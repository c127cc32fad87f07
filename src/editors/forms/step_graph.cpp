#include "editors/forms/step_graph.h"

#include "cvdata/speed_cvs.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace karvo
{

namespace
{

constexpr int unitsPerLabel = 10;
constexpr int pageStep = 10;

// Speaks the chosen step and its value.
class StepGraphVoice : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit StepGraphVoice(StepGraph* graph) : QAccessibleWidget(graph, QAccessible::Slider), graph_(graph)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? graph_->spokenValue() : QAccessibleWidget::text(kind);
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return graph_->chosenValue(); }
    void setCurrentValue(const QVariant& value) override
    {
        emit graph_->valueWanted(graph_->chosenStep(),
                                 std::clamp(value.toInt(), graph_->lowest(), graph_->highest()));
    }
    QVariant maximumValue() const override { return graph_->highest(); }
    QVariant minimumValue() const override { return graph_->lowest(); }
    QVariant minimumStepSize() const override { return 1; }

private:
    StepGraph* graph_;
};

QAccessibleInterface* voiceOf(const QString&, QObject* object)
{
    auto* const graph = qobject_cast<StepGraph*>(object);
    return graph != nullptr ? new StepGraphVoice(graph) : nullptr;
}

} // namespace

StepGraph::StepGraph(QWidget* parent) : QWidget(parent)
{
    static const bool installed = [] {
        QAccessible::installFactory(voiceOf);
        return true;
    }();
    Q_UNUSED(installed);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void StepGraph::show(const Picture& picture)
{
    const int before = chosenValue();
    picture_ = picture;
    if (chosenValue() != before) {
        QAccessibleValueChangeEvent event(this, chosenValue());
        QAccessible::updateAccessibility(&event);
    }
    setToolTip(spokenValue());
    updateGeometry();
    update();
}

void StepGraph::choose(int step)
{
    if (step < 1 || step > speedStepCount || step == chosen_)
        return;
    chosen_ = step;
    QAccessibleValueChangeEvent event(this, chosenValue());
    QAccessible::updateAccessibility(&event);
    setToolTip(spokenValue());
    update();
    emit stepChosen(step);
}

QPoint StepGraph::endOfBar(int step, int value) const
{
    return QPointF(column(step).center().x(), plot().bottom() - height(value)).toPoint();
}

QSize StepGraph::sizeHint() const
{
    return {speedStepCount * fontMetrics().horizontalAdvance(u'0') * 4, minimumSizeHint().height()};
}

// Each label has room.
QSize StepGraph::minimumSizeHint() const
{
    const int columnWidth = fontMetrics().horizontalAdvance(QStringLiteral("28 "));
    return {(speedStepCount + 2) * columnWidth,
            (scale() / unitsPerLabel + 3) * fontMetrics().height() * 4 / 5};
}

int StepGraph::scale() const
{
    const int tallest =
        std::max({picture_.highest, *std::max_element(picture_.shown.begin(), picture_.shown.end()),
                  *std::max_element(picture_.taken.begin(), picture_.taken.end())});
    return (tallest + unitsPerLabel - 1) / unitsPerLabel * unitsPerLabel;
}

QRectF StepGraph::plot() const
{
    const int line = fontMetrics().height();
    const int labels = fontMetrics().horizontalAdvance(QStringLiteral("000 "));
    return QRectF(rect()).adjusted(labels, line, -2, -line - 2);
}

QRectF StepGraph::column(int step) const
{
    const QRectF area = plot();
    const double width = area.width() / speedStepCount;
    return {area.left() + width * (step - 1), area.top(), width, area.height()};
}

double StepGraph::height(int value) const
{
    return plot().height() * value / scale();
}

int StepGraph::stepAt(double x) const
{
    const QRectF area = plot();
    const int step = static_cast<int>(std::floor((x - area.left()) / area.width() * speedStepCount)) + 1;
    return std::clamp(step, 1, speedStepCount);
}

int StepGraph::valueAt(double y) const
{
    const QRectF area = plot();
    return static_cast<int>(std::lround((area.bottom() - y) / area.height() * scale()));
}

void StepGraph::want(int value)
{
    if (!readOnly_)
        emit valueWanted(chosen_, std::clamp(value, picture_.lowest, picture_.highest));
}

void StepGraph::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    choose(stepAt(event->position().x()));
    dragging_ = true;
}

// The bar that was taken hold of follows, even where the mouse strays over another one.
void StepGraph::mouseMoveEvent(QMouseEvent* event)
{
    if (dragging_)
        want(valueAt(event->position().y()));
}

void StepGraph::mouseReleaseEvent(QMouseEvent*)
{
    dragging_ = false;
}

void StepGraph::keyPressEvent(QKeyEvent* event)
{
    if (!pressKey(event->key()))
        QWidget::keyPressEvent(event);
}

bool StepGraph::pressKey(int key)
{
    switch (key) {
    case Qt::Key_Left:
        choose(chosen_ - 1);
        return true;
    case Qt::Key_Right:
        choose(chosen_ + 1);
        return true;
    case Qt::Key_Home:
        choose(1);
        return true;
    case Qt::Key_End:
        choose(speedStepCount);
        return true;
    case Qt::Key_Up:
        want(chosenValue() + 1);
        return true;
    case Qt::Key_Down:
        want(chosenValue() - 1);
        return true;
    case Qt::Key_PageUp:
        want(chosenValue() + pageStep);
        return true;
    case Qt::Key_PageDown:
        want(chosenValue() - pageStep);
        return true;
    default:
        return false;
    }
}

void StepGraph::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    paintAxes(painter);
    paintBars(painter);
    paintChosen(painter);
}

void StepGraph::paintAxes(QPainter& painter) const
{
    const QRectF area = plot();
    const int line = fontMetrics().height();
    QColor grid = palette().color(QPalette::Text);
    grid.setAlphaF(0.2F);
    for (int units = 0; units <= scale(); units += unitsPerLabel) {
        const double y = area.bottom() - height(units);
        painter.setPen(grid);
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(0, y - line / 2.0, area.left() - 4, line), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(units));
    }
    for (int step = 1; step <= speedStepCount; ++step) {
        const QRectF under = column(step);
        painter.drawText(QRectF(under.left() - 4, area.bottom() + 2, under.width() + 8, line),
                         Qt::AlignCenter, QString::number(step));
    }
}

// The bars of the last take-over are wider: they show at both sides of those in front.
void StepGraph::paintBars(QPainter& painter) const
{
    const QRectF area = plot();
    QColor behind = palette().color(QPalette::Text);
    behind.setAlphaF(0.25F);
    for (int step = 1; step <= speedStepCount; ++step) {
        const QRectF place = column(step);
        const auto bar = [&](int value, double share) {
            const double width = place.width() * share;
            return QRectF(place.center().x() - width / 2, area.bottom() - height(value), width,
                          height(value));
        };
        const auto at = static_cast<std::size_t>(step - 1);
        const QRectF old = bar(picture_.taken[at], 0.9);
        painter.fillRect(old, behind);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawLine(old.topLeft(), old.topRight());
        painter.fillRect(bar(picture_.shown[at], 0.55), palette().highlight());
    }
}

void StepGraph::paintChosen(QPainter& painter) const
{
    const QRectF place = column(chosen_);
    const int line = fontMetrics().height();
    QPen frame(palette().color(QPalette::Text), hasFocus() ? 2 : 1);
    if (!hasFocus())
        frame.setStyle(Qt::DotLine);
    painter.setPen(frame);
    painter.drawRect(place);
    const QString text = spokenValue();
    const double width = fontMetrics().horizontalAdvance(text) + 8.0;
    const double lowest = plot().left(); // beside the labels of the scale
    const double left =
        std::clamp(place.center().x() - width / 2, lowest, std::max(lowest, this->width() - width));
    painter.drawText(QRectF(left, 0, width, line), Qt::AlignCenter, text);
}

} // namespace karvo
