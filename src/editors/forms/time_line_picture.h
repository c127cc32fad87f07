// The time line of a bus stop or of an emergency run, with the vehicle on its way.
#pragma once

#include "editors/forms/picture.h"
#include "editors/time_line.h"

#include <vector>

namespace karvo
{

class TimeLinePicture : public MovingPicture
{
    Q_OBJECT

public:
    enum class Kind { busStop, emergencyRun };
    TimeLinePicture(const PictureWords& words, Kind kind, QWidget* parent);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void valuesChanged() override;
    void describe() override;
    bool moves() const override { return !line_.phases.empty(); }
    // To the next time at which something begins or ends.
    int stepLength() const override;
    int following(int ms) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString moment() const;
    bool opens() const;
    int lead() const;   // ms that pass before time 0
    int length() const; // ms from there to the end
    int hurry() const;  // how many times faster than the vehicle it runs
    int time() const;   // ms of the time line that are shown
    bool isLit(Track track) const;

    double lineHeight() const;
    double labelWidth() const;
    QRectF plot() const;
    double openWidth() const;
    double xOf(double ms) const;
    QRectF noteRect(const TimeLineNote& note, double top, double width) const;

    void paintScene(QPainter& painter, const QRectF& strip) const;
    void paintTrack(QPainter& painter, Track track, const QRectF& row) const;
    void paintPhase(QPainter& painter, const Phase& phase, const QRectF& row) const;
    void paintAxis(QPainter& painter, double top, double bottom) const;
    void paintNotes(QPainter& painter, double top) const;

    Kind kind_;
    TimeLine line_;
    std::vector<Track> tracks_; // that have phases, in their order
};

} // namespace karvo
