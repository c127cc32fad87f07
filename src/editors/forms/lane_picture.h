// A vehicle with lane control on its road, and how far it steers.
#pragma once

#include "editors/forms/picture.h"
#include "editors/lane_view.h"

namespace karvo
{

class LanePicture : public MovingPicture
{
    Q_OBJECT

public:
    LanePicture(const PictureWords& words, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void valuesChanged() override;
    void describe() override;
    bool moves() const override { return view_.mode != LaneView::off; }
    void paintEvent(QPaintEvent* event) override;

private:
    double lineHeight() const;
    double steering() const; // steps of the servo from straight ahead, to the right
    void paintRoad(QPainter& painter, const QRectF& road) const;
    void paintSteering(QPainter& painter) const;
    void paintScale(QPainter& painter, const QRectF& area) const;

    LaneView view_;
};

} // namespace karvo
