#include "editors/forms/vehicle_drawing.h"

#include "editors/forms/picture.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace karvo
{

namespace
{

// Both views are drawn in units of a hundredth of the vehicle's length.
constexpr double length = VehicleDrawing::unitLength;
constexpr double width = VehicleDrawing::unitWidth;
constexpr double beamRoom = 30;
constexpr double margin = 7;
constexpr double height = 40; // from behind

struct Spot {
    Light light;
    double x;
    double y;
    double width = 3.2;
    double height = 3.2;
};

// From above: the front is at x = 0, the vehicle's left side at y = 36.
constexpr Spot fromAbove[] = {
    {Light::headlight, 1.5, 6.5, 2.6, 4.4},
    {Light::headlight, 1.5, 29.5, 2.6, 4.4},
    {Light::highBeam, 1.5, 11.5, 2.4, 3.2},
    {Light::highBeam, 1.5, 24.5, 2.4, 3.2},
    {Light::parkingLight, 1.8, 3, 2.2, 2.2},
    {Light::parkingLight, 1.8, 33, 2.2, 2.2},
    {Light::frontBeacon, 0.4, 15.4, 2.6, 3.2},
    {Light::frontBeacon, 0.4, 20.6, 2.6, 3.2},
    {Light::leftIndicator, 5, 35.4, 4.2, 2.6},
    {Light::leftIndicator, 95, 35.4, 4.2, 2.6},
    {Light::rightIndicator, 5, 0.6, 4.2, 2.6},
    {Light::rightIndicator, 95, 0.6, 4.2, 2.6},
    {Light::rearLight, 98.8, 5, 2.4, 3.6},
    {Light::rearLight, 98.8, 31, 2.4, 3.6},
    {Light::brakeLight, 98.8, 9.4, 2.4, 3.6},
    {Light::brakeLight, 98.8, 26.6, 2.4, 3.6},
    {Light::reversingLight, 98.8, 13.4, 2.4, 3},
    {Light::reversingLight, 98.8, 22.6, 2.4, 3},
    {Light::thirdBrakeLight, 98.6, 18, 2, 4.6},
    {Light::beacon1, 15, 27.5, 5, 5},
    {Light::beacon2, 15, 8.5, 5, 5},
    {Light::roofBeacon, 51, 18, 5, 5},
    {Light::rearBeacon, 88, 18, 4.4, 4.4},
};

// From behind: the vehicle's left side is at x = 0, its roof at y = 0.
constexpr Spot fromBehind[] = {
    {Light::rearLight, 4.4, 28.6},
    {Light::rearLight, 31.6, 28.6},
    {Light::brakeLight, 4.4, 24.6},
    {Light::brakeLight, 31.6, 24.6},
    {Light::leftIndicator, 4.4, 20.6},
    {Light::rightIndicator, 31.6, 20.6},
    {Light::reversingLight, 8.8, 28.6},
    {Light::reversingLight, 27.2, 28.6},
    {Light::thirdBrakeLight, 18, 20.2, 9, 2},
    {Light::beacon1, 7, -2, 5, 4},
    {Light::beacon2, 29, -2, 5, 4},
    {Light::roofBeacon, 18, -2.4, 5, 4.4},
    {Light::rearBeacon, 18, 3.2, 3.4, 2.6},
};

QRectF placeOf(const Spot& spot)
{
    return {spot.x - spot.width / 2, spot.y - spot.height / 2, spot.width, spot.height};
}

QColor bodyColor(Body body)
{
    switch (body) {
    case Body::bus:
        return {52, 112, 116};
    case Body::fireEngine:
        return {150, 44, 42};
    case Body::car:
        return {104, 112, 128};
    default:
        return {88, 99, 117};
    }
}

void setLine(QPainter& painter, double thickness = 0.5)
{
    painter.setPen(QPen(roadLineColor(), thickness));
}

void paintWheels(QPainter& painter, std::initializer_list<double> axles)
{
    painter.setBrush(QColor(12, 13, 15));
    setLine(painter, 0.3);
    for (const double x : axles)
        for (const double y : {-0.9, width - 2.1})
            painter.drawRoundedRect(QRectF(x - 5, y, 10, 3), 1, 1);
}

void paintBusRoof(QPainter& painter, Body body, const QColor& window)
{
    paintWheels(painter, {20, 78});
    painter.setBrush(bodyColor(body));
    setLine(painter);
    for (const double y : {-3.4, width + 0.8}) // its mirrors
        painter.drawRoundedRect(QRectF(0.5, y, 2.2, 2.6), 0.8, 0.8);
    painter.drawRoundedRect(QRectF(0, 0, length, width), 4, 4);
    painter.setBrush(window);
    setLine(painter, 0.3);
    painter.drawRoundedRect(QRectF(3.4, 3.4, 3.6, width - 6.8), 1.6, 1.6);
    for (double x = 11; x < 90; x += 12)
        for (const double y : {1.6, width - 4.2})
            painter.drawRect(QRectF(x, y, 10, 2.6));
    painter.setBrush(Qt::NoBrush);
    for (const double x : {30.0, 66.0}) // its roof hatches
        painter.drawRoundedRect(QRectF(x, 11, 12, 14), 1, 1);
}

void paintCab(QPainter& painter, Body body, const QColor& window)
{
    painter.setBrush(bodyColor(body));
    setLine(painter);
    for (const double y : {-2.8, width + 0.2})
        painter.drawRoundedRect(QRectF(4, y, 2, 2.6), 0.8, 0.8);
    painter.drawRoundedRect(QRectF(0, 0.6, 23, width - 1.2), 3.6, 3.6);
    painter.setBrush(window);
    setLine(painter, 0.3);
    painter.drawRoundedRect(QRectF(3.6, 3.4, 4.2, width - 6.8), 1.6, 1.6);
    for (const double y : {1.8, width - 4.2})
        painter.drawRect(QRectF(9.5, y, 10, 2.4));
}

void paintLadder(QPainter& painter)
{
    setLine(painter, 0.6);
    for (const double y : {13.4, 22.6})
        painter.drawLine(QPointF(25, y), QPointF(97, y));
    for (double x = 27; x < 97; x += 4)
        painter.drawLine(QPointF(x, 13.4), QPointF(x, 22.6));
}

void paintBox(QPainter& painter, Body body, double front)
{
    painter.setBrush(bodyColor(body));
    setLine(painter);
    painter.drawRoundedRect(QRectF(front, 0, length - front, width), 1, 1);
    painter.setPen(QPen(mixed(bodyColor(body), roadLineColor(), 0.35), 0.4));
    for (double x = front + 9; x < length - 4; x += 9)
        painter.drawLine(QPointF(x, 1.5), QPointF(x, width - 1.5));
}

void paintLorryRoof(QPainter& painter, Body body, const QColor& window)
{
    paintWheels(painter, {13, 72, 85});
    paintCab(painter, body, window);
    paintBox(painter, body, 25);
    if (body == Body::fireEngine)
        paintLadder(painter);
}

void paintTrailerRoof(QPainter& painter, Body body)
{
    paintWheels(painter, {66, 80});
    setLine(painter, 1);
    for (const double y : {8.0, width - 8.0}) // its drawbar
        painter.drawLine(QPointF(-12, width / 2), QPointF(4, y));
    paintBox(painter, body, 0);
}

void paintCarRoof(QPainter& painter, Body body, const QColor& window)
{
    paintWheels(painter, {19, 80});
    painter.setBrush(bodyColor(body));
    setLine(painter);
    for (const double y : {-2.4, width - 0.4})
        painter.drawRoundedRect(QRectF(33, y, 3, 2.8), 1, 1);
    painter.drawRoundedRect(QRectF(0, 0, length, width), 13, 10);
    painter.setBrush(window);
    setLine(painter, 0.3);
    painter.drawRoundedRect(QRectF(30, 3.6, 58, width - 7.2), 8, 8);
    painter.setBrush(mixed(bodyColor(body), roadLineColor(), 0.12));
    painter.drawRoundedRect(QRectF(43, 6, 33, width - 12), 4, 4);
}

void paintRear(QPainter& painter, Body body, const QColor& window)
{
    painter.setBrush(QColor(12, 13, 15));
    setLine(painter, 0.3);
    for (const double x : {3.0, 26.0})
        painter.drawRoundedRect(QRectF(x, height - 7, 7, 8), 1.4, 1.4);
    painter.setBrush(bodyColor(body));
    setLine(painter);
    if (body == Body::car) {
        QPainterPath shape(QPointF(0, 34));
        shape.lineTo(0, 20);
        shape.quadTo(2, 15, 6, 14);
        shape.lineTo(10, 2);
        shape.quadTo(18, 0, 26, 2);
        shape.lineTo(30, 14);
        shape.quadTo(34, 15, 36, 20);
        shape.lineTo(36, 34);
        shape.closeSubpath();
        painter.drawPath(shape);
    } else {
        painter.drawRoundedRect(QRectF(0, 0, width, 36), body == Body::bus ? 3.6 : 1,
                                body == Body::bus ? 3.6 : 1);
    }
    painter.setBrush(window);
    setLine(painter, 0.3);
    if (body == Body::bus)
        painter.drawRoundedRect(QRectF(3.4, 5.4, width - 6.8, 12), 1.6, 1.6);
    else if (body == Body::car)
        painter.drawPolygon(QPolygonF({{10.4, 4.2}, {25.6, 4.2}, {28, 13.2}, {8, 13.2}}));
    else {
        painter.drawLine(QPointF(width / 2, 1.5), QPointF(width / 2, 31));
        for (const double x : {7.0, 21.0})
            painter.drawRect(QRectF(x, 6, 8, 6.4));
    }
    painter.setBrush(QColor(214, 219, 226));
    painter.drawRect(QRectF(13, 30.6, 10, 3)); // its number plate
}

} // namespace

QColor roadColor()
{
    return {35, 39, 46};
}

QColor roadLineColor()
{
    return {202, 210, 221};
}

QColor glassColor(Light light)
{
    switch (light) {
    case Light::rearLight:
    case Light::brakeLight:
    case Light::thirdBrakeLight:
        return {255, 48, 40};
    case Light::leftIndicator:
    case Light::rightIndicator:
        return {255, 168, 20};
    case Light::beacon1:
    case Light::beacon2:
    case Light::roofBeacon:
    case Light::frontBeacon:
    case Light::rearBeacon:
        return {64, 140, 255};
    case Light::interiorLight:
    case Light::doorLight:
        return {255, 220, 130};
    default:
        return {255, 248, 222};
    }
}

void paintLamp(QPainter& painter, const QRectF& place, const QColor& glass, double level)
{
    const double reach = std::max(place.width(), place.height()) * (1 + level);
    if (level > 0) {
        QRadialGradient glow(place.center(), reach);
        QColor inner = glass;
        inner.setAlphaF(static_cast<float>(0.75 * level));
        glow.setColorAt(0, inner);
        inner.setAlpha(0);
        glow.setColorAt(1, inner);
        painter.setPen(Qt::NoPen);
        painter.setBrush(glow);
        painter.drawEllipse(place.center(), reach, reach);
    }
    const QColor dark = mixed(QColor(20, 22, 26), glass, 0.28);
    const double line = std::min(place.width(), place.height());
    painter.setPen(
        QPen(level > 0 ? mixed(glass, Qt::white, 0.5) : mixed(roadLineColor(), glass, 0.3), line / 8));
    painter.setBrush(mixed(mixed(dark, glass, std::min(1.0, level * 1.6)), Qt::white, 0.45 * level));
    painter.drawRoundedRect(place, line / 2, line / 2);
}

QColor VehicleDrawing::windowColor() const
{
    return mixed(QColor(30, 38, 52), glassColor(Light::interiorLight), level(Light::interiorLight));
}

void VehicleDrawing::paint(QPainter& painter, const QRectF& area) const
{
    constexpr double allWidth = beamRoom + length + 2 * margin + width + margin;
    constexpr double allHeight = height + 2 * margin;
    const double scale = std::min(area.width() / allWidth, area.height() / allHeight);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(area);
    painter.translate(area.center());
    painter.scale(scale, scale);
    painter.translate(-allWidth / 2 + beamRoom, -allHeight / 2 + margin);
    painter.translate(0, (height - width) / 2);
    if (body != Body::trailer) // it has no headlamps
        paintBeams(painter);
    paintFromAbove(painter);
    painter.translate(length + 2 * margin, -(height - width) / 2 + 1);
    paintFromBehind(painter);
    painter.restore();
}

void VehicleDrawing::paintBeams(QPainter& painter) const
{
    painter.setPen(Qt::NoPen);
    for (const Spot& spot : fromAbove) {
        const bool far = spot.light == Light::highBeam;
        const double bright = level(spot.light);
        if ((!far && spot.light != Light::headlight) || bright <= 0)
            continue;
        const double reach = far ? beamRoom : beamRoom * 0.75;
        const double spread = far ? 4.5 : 6.5;
        QLinearGradient beam(QPointF(spot.x, spot.y), QPointF(spot.x - reach, spot.y));
        QColor color = glassColor(spot.light);
        color.setAlphaF(static_cast<float>(0.6 * bright));
        beam.setColorAt(0, color);
        color.setAlpha(0);
        beam.setColorAt(1, color);
        painter.setBrush(beam);
        painter.drawPolygon(QPolygonF({{spot.x, spot.y - 1.5},
                                       {spot.x - reach, spot.y - spread},
                                       {spot.x - reach, spot.y + spread},
                                       {spot.x, spot.y + 1.5}}));
    }
}

void VehicleDrawing::paintFromAbove(QPainter& painter) const
{
    switch (body) {
    case Body::bus:
        paintBusRoof(painter, body, windowColor());
        break;
    case Body::car:
        paintCarRoof(painter, body, windowColor());
        break;
    case Body::trailer:
        paintTrailerRoof(painter, body);
        break;
    default:
        paintLorryRoof(painter, body, windowColor());
        break;
    }
    for (const Spot& spot : fromAbove)
        if (has[static_cast<std::size_t>(spot.light)])
            paintLamp(painter, placeOf(spot), glassColor(spot.light), level(spot.light));
}

void VehicleDrawing::paintFromBehind(QPainter& painter) const
{
    paintRear(painter, body, windowColor());
    for (const Spot& spot : fromBehind)
        if (has[static_cast<std::size_t>(spot.light)])
            paintLamp(painter, placeOf(spot), glassColor(spot.light), level(spot.light));
}

} // namespace karvo
