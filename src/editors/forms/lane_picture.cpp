#include "editors/forms/lane_picture.h"

#include "editors/forms/vehicle_drawing.h"
#include "editors/light_rhythm.h"
#include "ui/captions.h"

#include <QPainter>

#include <cmath>
#include <numbers>

namespace karvo
{

namespace
{

constexpr double pictureLines = 11;
constexpr double roadLines = 17;       // wide
constexpr double degreesOfAStep = 0.7; // schematic: no description tells the angle
constexpr int sweepTime = 4000;        // ms from one end to the other and back
constexpr int lastPosition = 255;

} // namespace

LanePicture::LanePicture(const PictureWords& words, QWidget* parent)
    : MovingPicture(QStringLiteral("lane"), words, Caption::pictureLane, parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LanePicture::valuesChanged()
{
    view_ = laneView(values());
    describe();
    restart(now());
}

void LanePicture::describe()
{
    QStringList all;
    for (const Text& text : laneTexts(words(), view_))
        all += qtText(text);
    setAccessibleDescription(spoken(all));
}

double LanePicture::lineHeight() const
{
    return QFontMetricsF(font()).height();
}

QSize LanePicture::sizeHint() const
{
    return QSizeF(lineHeight() * (roadLines + 20), lineHeight() * pictureLines).toSize();
}

double LanePicture::steering() const
{
    const double range = view_.highest - view_.straight;
    return isStill() ? range : range * std::sin(2 * std::numbers::pi * now() / sweepTime);
}

void LanePicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = lineHeight();
    const QRectF road(0, 0, std::min(roadLines * line, width() * 0.45), pictureLines * line);
    paintRoad(painter, road);
    painter.setPen(roadLineColor());
    showPaused(painter, road.topRight() + QPointF(-line / 3, line / 6));
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(road.adjusted(1, 1, -1, -1));
    }
    double top = line * 0.2;
    painter.setPen(palette().color(QPalette::WindowText));
    for (const Text& text : laneTexts(words(), view_)) {
        const QRectF place(road.right() + line, top, width() - road.right() - line, line * 2.2);
        QRectF used;
        painter.drawText(place, Qt::TextWordWrap, qtText(text), &used);
        top = used.bottom() + line * 0.2;
    }
    if (view_.mode == LaneView::steers)
        paintScale(painter, QRectF(road.right() + line, top + line * 0.6, width() - road.right() - 2 * line,
                                   line * 2.4));
}

// The vehicle drives up the picture.
void LanePicture::paintRoad(QPainter& painter, const QRectF& road) const
{
    painter.fillRect(road, roadColor());
    painter.save();
    painter.setClipRect(road);
    const double scale = road.height() * 0.62 / VehicleDrawing::unitLength;
    const double guide =
        road.center().x() + (view_.leftOfLine ? 0.6 : -0.6) * VehicleDrawing::unitWidth * scale;
    painter.setPen(QPen(roadLineColor(), 2 * scale));
    for (const double edge : {road.left() + 8 * scale, road.right() - 8 * scale})
        painter.drawLine(QPointF(edge, road.top()), QPointF(edge, road.bottom()));
    QPen line(QColor(255, 255, 255), 4 * scale, Qt::SolidLine, Qt::FlatCap);
    painter.setPen(line);
    painter.drawLine(QPointF(guide, road.top()), QPointF(guide, road.bottom()));

    VehicleDrawing vehicle{bodyOf(values(), false)};
    const bool stopsAndFlashes = view_.mode > LaneView::steers;
    const double lit = stopsAndFlashes && (isStill() || now() / schematic::indicatorPhase % 2 == 0) ? 1 : 0;
    for (const Light light : {Light::leftIndicator, Light::rightIndicator}) {
        vehicle.has[static_cast<std::size_t>(light)] = true;
        vehicle.levels[static_cast<std::size_t>(light)] = lit;
    }
    const double middle = guide + (view_.leftOfLine ? -1.2 : 1.2) * VehicleDrawing::unitWidth * scale;
    painter.translate(middle + VehicleDrawing::unitWidth * scale / 2, road.bottom() - road.height() * 0.66);
    painter.scale(scale, scale);
    painter.rotate(90);
    if (view_.mode == LaneView::steers)
        paintSteering(painter);
    vehicle.paintFromAbove(painter);
    painter.restore();
}

// From the front axle: straight ahead, the ends, and where it steers now.
void LanePicture::paintSteering(QPainter& painter) const
{
    const QPointF axle(18, VehicleDrawing::unitWidth / 2);
    const auto ray = [&](double steps) {
        const double angle = steps * degreesOfAStep * std::numbers::pi / 180;
        return axle + QPointF(-std::cos(angle), -std::sin(angle)) * 62;
    };
    const double range = view_.highest - view_.straight;
    QColor fan(255, 210, 90, 90);
    painter.setPen(QPen(QColor(255, 210, 90), 1.4));
    painter.setBrush(fan);
    const QRectF circle(axle - QPointF(62, 62), QSizeF(124, 124));
    painter.drawPie(circle, static_cast<int>((180 - range * degreesOfAStep) * 16),
                    static_cast<int>(2 * range * degreesOfAStep * 16));
    painter.setPen(QPen(roadLineColor(), 1.2, Qt::DashLine));
    painter.drawLine(axle, ray(0));
    painter.setPen(QPen(QColor(255, 255, 255), 2.4));
    painter.drawLine(axle, ray(steering()));
}

// All positions of the servo, and those between which it steers.
void LanePicture::paintScale(QPainter& painter, const QRectF& area) const
{
    const double line = lineHeight();
    const QColor text = palette().color(QPalette::WindowText);
    const QColor base = palette().color(QPalette::Window);
    const QRectF bar(area.left() + line, area.top() + line * 0.2, area.width() - 2 * line, line * 0.8);
    const auto xOf = [&](double position) { return bar.left() + bar.width() * position / lastPosition; };
    painter.setPen(QPen(mixed(base, text, 0.65), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(bar);
    const QRectF range(xOf(view_.lowest), bar.top(), xOf(view_.highest) - xOf(view_.lowest), bar.height());
    painter.setBrush(mixed(base, palette().color(QPalette::Highlight), 0.6));
    painter.drawRect(range);
    painter.setPen(QPen(text, 2));
    painter.drawLine(QPointF(xOf(view_.straight), bar.top() - line * 0.2),
                     QPointF(xOf(view_.straight), bar.bottom() + line * 0.2));
    const double now = xOf(view_.straight + steering());
    painter.setBrush(text);
    painter.drawPolygon(QPolygonF({{now, bar.top()},
                                   {now - line * 0.3, bar.top() - line * 0.5},
                                   {now + line * 0.3, bar.top() - line * 0.5}}));
    for (const int position : {view_.lowest, view_.straight, view_.highest})
        painter.drawText(QRectF(xOf(position) - line * 2, bar.bottom() + line * 0.2, line * 4, line),
                         Qt::AlignCenter, QString::number(position));
}

} // namespace karvo
