#include "editors/forms/roadside_drawing.h"

#include "editors/forms/picture.h"
#include "editors/forms/vehicle_drawing.h"

#include <QPainter>
#include <QPainterPath>

namespace karvo
{

namespace
{

// Drawn in units of a hundredth of a bus's length; the road lies at y = 0, up is negative.
constexpr double vehicleLength = 100;
constexpr double stripHeight = 74;
constexpr double roadDepth = 9;

void line(QPainter& painter, double thickness = 0.8)
{
    painter.setPen(QPen(roadLineColor(), thickness));
}

void paintWheel(QPainter& painter, double x)
{
    line(painter, 0.8);
    painter.setBrush(QColor(12, 13, 15));
    painter.drawEllipse(QPointF(x, -4.5), 5.5, 5.5);
    painter.setBrush(QColor(110, 120, 136));
    painter.drawEllipse(QPointF(x, -4.5), 2.2, 2.2);
}

QColor glass(bool lit)
{
    return lit ? glassColor(Light::interiorLight) : QColor(30, 38, 52);
}

void paintBeam(QPainter& painter, double x, double y, bool high)
{
    QLinearGradient beam(QPointF(x, y), QPointF(x + 40, y));
    QColor color = glassColor(Light::headlight);
    color.setAlphaF(high ? 0.7F : 0.35F);
    beam.setColorAt(0, color);
    color.setAlpha(0);
    beam.setColorAt(1, color);
    painter.setPen(Qt::NoPen);
    painter.setBrush(beam);
    painter.drawPolygon(QPolygonF({{x, y - 1}, {x + 40, y - (high ? 8 : 1)}, {x + 40, 0}, {x, y + 2}}));
}

void paintStop(QPainter& painter, double x)
{
    line(painter, 1.4);
    painter.drawLine(QPointF(x, 0), QPointF(x, -38));
    painter.setBrush(QColor(245, 205, 50));
    line(painter, 0.8);
    painter.drawEllipse(QPointF(x, -42), 6.4, 6.4);
    painter.setPen(QPen(QColor(25, 90, 45), 1.8));
    for (const double side : {-2.2, 2.2})
        painter.drawLine(QPointF(x + side, -45), QPointF(x + side, -39));
    painter.drawLine(QPointF(x - 2.2, -42), QPointF(x + 2.2, -42));
    painter.setBrush(QColor(60, 70, 88)); // its shelter
    line(painter, 0.8);
    painter.drawRect(QRectF(x + 14, -32, 34, 2.5));
    painter.drawLine(QPointF(x + 17, -30), QPointF(x + 17, 0));
    painter.drawLine(QPointF(x + 45, -30), QPointF(x + 45, 0));
    painter.drawRect(QRectF(x + 21, -9, 20, 2));
}

void paintStation(QPainter& painter)
{
    line(painter);
    painter.setBrush(QColor(92, 52, 52));
    painter.drawRect(QRectF(4, -44, 122, 44));
    painter.setBrush(QColor(24, 27, 33));
    painter.drawRect(QRectF(12, -36, 106, 36));
}

void paintBurningHouse(QPainter& painter, double x)
{
    line(painter);
    painter.setBrush(QColor(70, 78, 92));
    painter.drawPolygon(QPolygonF({{x, -30}, {x + 24, -48}, {x + 48, -30}, {x + 48, 0}, {x, 0}}));
    painter.setBrush(glass(true));
    painter.drawRect(QRectF(x + 8, -24, 10, 9));
    painter.setBrush(QColor(30, 38, 52));
    painter.drawRect(QRectF(x + 29, -16, 10, 16));
    QPainterPath flame(QPointF(x + 30, -26));
    flame.cubicTo(x + 26, -36, x + 36, -38, x + 33, -50);
    flame.cubicTo(x + 44, -42, x + 42, -34, x + 40, -26);
    flame.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 140, 30));
    painter.drawPath(flame);
}

} // namespace

void RoadsideDrawing::paint(QPainter& painter, const QRectF& strip) const
{
    painter.save();
    painter.setClipRect(strip);
    painter.fillRect(strip, roadColor());
    const double scale = strip.height() / stripHeight;
    painter.translate(strip.left(), strip.bottom() - roadDepth * scale);
    painter.scale(scale, scale);
    const double width = strip.width() / scale;
    painter.fillRect(QRectF(0, 0, width, roadDepth), mixed(roadColor(), Qt::black, 0.4));
    line(painter, 0.8);
    painter.drawLine(QPointF(0, 0), QPointF(width, 0));
    paintPlaces(painter, width);
    if (body ==
        Body::bus) { // from outside on the left to outside on the right, with its front door at the stop
        const double stop = width * 0.5 - 82;
        const double left = driven < 0.5 ? -vehicleLength + (stop + vehicleLength) * driven * 2
                                         : stop + (width - stop) * (driven * 2 - 1);
        painter.translate(left, 3);
        paintBus(painter);
    } else {
        painter.translate(15 + (width - 15 - vehicleLength - 70) * driven, 3);
        paintFireEngine(painter);
    }
    painter.restore();
}

void RoadsideDrawing::paintPlaces(QPainter& painter, double width) const
{
    if (body == Body::bus) {
        paintStop(painter, width * 0.5 + 8);
        return;
    }
    paintStation(painter);
    paintBurningHouse(painter, width - 54);
}

void RoadsideDrawing::paintBus(QPainter& painter) const
{
    paintBeam(painter, 99, -9, highBeam);
    line(painter);
    painter.setBrush(QColor(44, 122, 126));
    painter.drawRoundedRect(QRectF(0, -36, vehicleLength, 32), 4, 4);
    painter.setBrush(QColor(226, 222, 210));
    painter.setPen(Qt::NoPen);
    painter.drawRect(QRectF(0.6, -14, vehicleLength - 1.2, 2.4));
    painter.setBrush(glass(interior));
    line(painter, 0.6);
    for (const double x : {4.0, 18.0, 46.0, 60.0})
        painter.drawRect(QRectF(x, -31, 12.5, 13));
    painter.drawRoundedRect(QRectF(92, -31, 8, 15), 1.5, 1.5); // the windscreen from the side
    painter.setBrush(glass(door || interior));
    for (const double x : {32.5, 76.0}) { // two doors
        line(painter, 1);
        painter.drawRect(QRectF(x, -31, 12, 26.5));
        painter.drawLine(QPointF(x + 6, -31), QPointF(x + 6, -4.5));
    }
    if (door) // falls onto the pavement
        for (const double x : {32.5, 76.0}) {
            QColor light = glassColor(Light::doorLight);
            light.setAlpha(150);
            painter.setPen(Qt::NoPen);
            painter.setBrush(light);
            painter.drawPolygon(QPolygonF({{x, -4.5}, {x + 12, -4.5}, {x + 16, 3}, {x - 4, 3}}));
        }
    for (const double x : {18.0, 66.0})
        paintWheel(painter, x);
    for (const double x : {1.0, 96.4})
        paintLamp(painter, QRectF(x, -12, 3.4, 3.4), glassColor(Light::leftIndicator), indicator ? 1 : 0);
    paintLamp(painter, QRectF(-0.8, -20, 2.4, 4), glassColor(Light::rearLight), 0.5);
    paintLamp(painter, QRectF(98.2, -8.6, 2.6, 3.2), glassColor(Light::headlight), 1);
}

void RoadsideDrawing::paintFireEngine(QPainter& painter) const
{
    paintBeam(painter, 99, -9, highBeam);
    line(painter);
    painter.setBrush(QColor(196, 40, 36));
    painter.drawRoundedRect(QRectF(0, -33, 68, 29), 1.5, 1.5);
    painter.drawRoundedRect(QRectF(70, -34, 30, 30), 3.5, 3.5);
    painter.setBrush(QColor(226, 222, 210));
    painter.setPen(Qt::NoPen);
    painter.drawRect(QRectF(0.6, -12, 98.6, 2.6));
    painter.setBrush(QColor(150, 158, 170));
    line(painter, 0.6);
    for (const double x : {4.0, 25.0, 46.0}) { // its lockers
        painter.drawRect(QRectF(x, -30, 18, 15));
        for (double y = -27; y < -16; y += 3)
            painter.drawLine(QPointF(x, y), QPointF(x + 18, y));
    }
    painter.setBrush(glass(interior));
    painter.drawRect(QRectF(74, -31, 10, 12));
    painter.drawRoundedRect(QRectF(88, -31, 11, 13), 1.5, 1.5);
    line(painter, 1);
    for (const double y : {-38.0, -35.5}) // the ladder
        painter.drawLine(QPointF(2, y), QPointF(72, y));
    for (double x = 6; x < 72; x += 5)
        painter.drawLine(QPointF(x, -38), QPointF(x, -35.5));
    for (const double x : {17.0, 82.0})
        paintWheel(painter, x);
    for (const double x : {1.0, 95.6})
        paintLamp(painter, QRectF(x, -8.6, 3.2, 3.2), glassColor(Light::leftIndicator), indicator ? 1 : 0);
    paintLamp(painter, QRectF(-0.8, -18, 2.4, 4), glassColor(Light::rearLight), 0.5);
    paintLamp(painter, QRectF(98.2, -8.6, 2.6, 3.2), glassColor(Light::headlight), 1);
    paintLamp(painter, QRectF(82, -38, 8, 4), glassColor(Light::beacon1), beacon ? 1 : 0);
}

} // namespace karvo
