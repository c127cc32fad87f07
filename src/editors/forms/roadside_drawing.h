// A bus on its way to a stop and on, or a fire engine on its way to a fire, from the side, at night.
#pragma once

#include "editors/vehicle_lights.h"

#include <QRectF>

class QPainter;

namespace karvo
{

struct RoadsideDrawing {
    Body body = Body::bus; // or fireEngine
    double driven = 0;     // 0 to 1, the share of its way; a bus stops at a half
    bool indicator = false;
    bool door = false;
    bool interior = false;
    bool beacon = false;
    bool highBeam = false;

    void paint(QPainter& painter, const QRectF& strip) const;

private:
    void paintPlaces(QPainter& painter, double width) const;
    void paintBus(QPainter& painter) const;
    void paintFireEngine(QPainter& painter) const;
};

} // namespace karvo
