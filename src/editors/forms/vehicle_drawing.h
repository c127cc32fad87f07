// Draws a vehicle from above and from behind, with its lights as bright as they are.
#pragma once

#include "editors/vehicle_lights.h"

#include <QColor>
#include <QRectF>

class QPainter;

namespace karvo
{

// The road at night that the lights stand out from, in light palettes as in dark ones, and the lines on it.
QColor roadColor();
QColor roadLineColor();

QColor glassColor(Light light);

// A lamp behind its glass: dark at level 0, with a glow around it at level 1.
void paintLamp(QPainter& painter, const QRectF& place, const QColor& glass, double level);

struct VehicleDrawing {
    Body body = Body::bus;
    std::array<bool, lightCount> has{};
    std::array<double, lightCount> levels{};

    // Both views beside each other in `area`, as large as they fit; the front points to the left.
    void paint(QPainter& painter, const QRectF& area) const;

    static constexpr double widthToHeight = 3.5;

    // In units of a hundredth of its length: the front is at x = 0, its right side at y = 0.
    void paintFromAbove(QPainter& painter) const;
    static constexpr double unitLength = 100;
    static constexpr double unitWidth = 36;

private:
    void paintFromBehind(QPainter& painter) const;
    void paintBeams(QPainter& painter) const;
    double level(Light light) const { return levels[static_cast<std::size_t>(light)]; }
    QColor windowColor() const;
};

} // namespace karvo
