#include "editors/forms/time_line_picture.h"

#include "editors/forms/roadside_drawing.h"
#include "editors/forms/vehicle_drawing.h"
#include "ui/captions.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace karvo
{

namespace
{

constexpr int openTime = 3000;      // ms in which what has no known length is shown
constexpr int longestShow = 24'000; // ms; what takes longer runs faster
constexpr double stripLines = 7.2;
constexpr double trackLines = 1.5;

QColor trackColor(Track track)
{
    switch (track) {
    case Track::driving:
        return {70, 150, 210};
    case Track::doorLight:
    case Track::interiorLight:
        return glassColor(Light::interiorLight);
    case Track::beacons:
    case Track::frontBeacon:
        return glassColor(Light::beacon1);
    case Track::highBeam:
        return glassColor(Light::highBeam);
    case Track::priority:
        return {60, 190, 90};
    default:
        return glassColor(Light::leftIndicator);
    }
}

// A distance between marks of the axis that is easy to read.
int axisStep(double msOfSpace)
{
    for (const int step : {100, 200, 500, 1000, 2000, 5000, 10'000, 20'000, 30'000, 60'000})
        if (step >= msOfSpace)
            return step;
    return 120'000;
}

} // namespace

TimeLinePicture::TimeLinePicture(const PictureWords& words, Kind kind, QWidget* parent)
    : MovingPicture(kind == Kind::busStop ? QStringLiteral("bus_stop") : QStringLiteral("emergency_run"),
                    words, kind == Kind::busStop ? Caption::pictureBusStop : Caption::pictureEmergencyRun,
                    parent),
      kind_(kind)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TimeLinePicture::valuesChanged()
{
    line_ = kind_ == Kind::busStop ? busStop(values(), words().decimalComma) : emergencyRun(values());
    tracks_.clear();
    for (const Phase& phase : line_.phases)
        if (std::find(tracks_.begin(), tracks_.end(), phase.track) == tracks_.end())
            tracks_.push_back(phase.track);
    std::sort(tracks_.begin(), tracks_.end());
    describe();
    updateGeometry();
    restart(now());
}

QString TimeLinePicture::moment() const
{
    return qtText(momentText(words(), line_, time() / 100 * 100));
}

void TimeLinePicture::describe()
{
    QStringList all;
    if (isStepped())
        all += moment();
    for (const Phase& phase : line_.phases)
        all += qtText(phaseText(words(), line_, phase));
    for (const TimeLineNote& note : line_.notes)
        all += qtText(noteText(words().texts, note));
    setAccessibleDescription(spoken(all));
}

bool TimeLinePicture::opens() const
{
    return std::any_of(line_.phases.begin(), line_.phases.end(),
                       [](const Phase& phase) { return !phase.from; });
}

int TimeLinePicture::lead() const
{
    return opens() ? openTime : 0;
}

int TimeLinePicture::length() const
{
    return lead() + line_.end + openTime;
}

int TimeLinePicture::hurry() const
{
    return std::max(1, (length() + longestShow - 1) / longestShow);
}

int TimeLinePicture::time() const
{
    const bool toDoor = isStill() && kind_ == Kind::busStop;
    if (!isStill())
        return now() * hurry() - lead();
    for (const Phase& phase : line_.phases)
        if (phase.track == (toDoor ? Track::doorLight : Track::driving) && phase.from && phase.to)
            return (*phase.from + *phase.to) / 2;
    return 0;
}

int TimeLinePicture::following(int ms) const
{
    return ms % std::max(length() / hurry(), 1);
}

int TimeLinePicture::stepLength() const
{
    int next = line_.end + openTime;
    for (const Phase& phase : line_.phases)
        for (const auto& edge : {phase.from, phase.to})
            if (edge && *edge > time() && *edge < next)
                next = *edge;
    return std::max((next - time() + hurry() - 1) / hurry(), 1);
}

// An indicator blinks as fast as it does on the vehicle, however fast the time line runs.
bool TimeLinePicture::isLit(Track track) const
{
    return std::any_of(line_.phases.begin(), line_.phases.end(), [&](const Phase& phase) {
        if (phase.track != track || !holdsAt(phase, time()))
            return false;
        const bool beacon =
            track == Track::beacons || track == Track::frontBeacon || track == Track::highBeam;
        const int half = beacon ? openTime / 12 : phase.phaseLength;
        return isStill() || half <= 0 || now() / half % 2 == 0;
    });
}

double TimeLinePicture::lineHeight() const
{
    return QFontMetricsF(font()).height();
}

double TimeLinePicture::labelWidth() const
{
    double widest = 0;
    for (const Track track : tracks_)
        widest = std::max(widest,
                          QFontMetricsF(font()).horizontalAdvance(qtText(trackName(words().texts, track))));
    return std::min(widest + 2 * lineHeight(), width() * 0.4);
}

QRectF TimeLinePicture::plot() const
{
    const double left = labelWidth();
    const double top = stripLines * lineHeight();
    return {left, top, width() - left - lineHeight() / 2,
            static_cast<double>(tracks_.size()) * trackLines * lineHeight()};
}

// As wide as its words, within reason.
double TimeLinePicture::openWidth() const
{
    double widest = 0;
    for (const Phase& phase : line_.phases)
        if (phase.track == Track::driving && !(phase.from && phase.to))
            widest = std::max(widest, QFontMetricsF(font()).horizontalAdvance(
                                          qtText(phaseName(words().texts, line_, phase))));
    return std::min(widest + lineHeight(), plot().width() * 0.28);
}

// To scale from 0 to the last known time; what is open at either side gets a fixed share.
double TimeLinePicture::xOf(double ms) const
{
    const QRectF area = plot();
    const double open = openWidth();
    const double before = opens() ? open : 0;
    const double scale = (area.width() - before - open) / std::max(line_.end, 1);
    if (ms < 0)
        return area.left() + before * std::max(0.0, 1 + ms / openTime);
    if (ms > line_.end)
        return area.right() - open * std::max(0.0, 1 - (ms - line_.end) / openTime);
    return area.left() + before + ms * scale;
}

QRectF TimeLinePicture::noteRect(const TimeLineNote& note, double top, double width) const
{
    const double indent = lineHeight() * 1.6;
    const QRectF place(indent, top, std::max(width - indent, 1.0), 10'000);
    return QFontMetricsF(font()).boundingRect(place, Qt::TextWordWrap, qtText(noteText(words().texts, note)));
}

int TimeLinePicture::heightForWidth(int width) const
{
    double height = stripLines * lineHeight();
    if (!tracks_.empty())
        height += (static_cast<double>(tracks_.size()) * trackLines + 1.4) * lineHeight();
    for (const TimeLineNote& note : line_.notes)
        height = noteRect(note, height, width).bottom() + lineHeight() * 0.3;
    return static_cast<int>(std::ceil(height));
}

QSize TimeLinePicture::sizeHint() const
{
    const int width = static_cast<int>(lineHeight() * 50);
    return {width, heightForWidth(width)};
}

QSize TimeLinePicture::minimumSizeHint() const
{
    return {static_cast<int>(lineHeight() * 22), static_cast<int>(lineHeight() * 8)};
}

void TimeLinePicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF strip(0, 0, width(), (stripLines - 0.4) * lineHeight());
    paintScene(painter, strip);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(strip.adjusted(1, 1, -1, -1));
    }
    double bottom = stripLines * lineHeight();
    if (!tracks_.empty()) {
        const QRectF area = plot();
        paintAxis(painter, area.top(), area.bottom());
        double top = area.top();
        for (const Track track : tracks_) {
            paintTrack(painter, track, QRectF(0, top, width(), trackLines * lineHeight()));
            top += trackLines * lineHeight();
        }
        if (!isStill()) {
            painter.setPen(QPen(palette().color(QPalette::WindowText), 1.5));
            painter.drawLine(QPointF(xOf(time()), area.top()), QPointF(xOf(time()), area.bottom()));
        }
        bottom = area.bottom() + 1.4 * lineHeight();
    }
    paintNotes(painter, bottom);
}

void TimeLinePicture::paintScene(QPainter& painter, const QRectF& strip) const
{
    RoadsideDrawing scene;
    scene.body = kind_ == Kind::busStop ? Body::bus : Body::fireEngine;
    const auto driving = [&](Phase::Kind kind) {
        return std::find_if(line_.phases.begin(), line_.phases.end(), [&](const Phase& phase) {
            return phase.track == Track::driving && phase.kind == kind;
        });
    };
    if (kind_ == Kind::busStop) {
        const double stop = line_.end > 0 ? driving(Phase::Kind::standing)->to.value_or(0) : 0;
        const double before = std::clamp(-time() / double(openTime), 0.0, 1.0);
        const double after = std::clamp((time() - stop) / openTime, 0.0, 1.0);
        scene.driven = 0.5 - 0.5 * before * before + 0.5 * after * after;
        if (line_.phases.empty())
            scene.driven = 0.75; // it drives past
    } else if (const auto run = driving(Phase::Kind::running); run != line_.phases.end()) {
        const double share = double(time() - *run->from) / std::max(*run->to - *run->from, 1);
        scene.driven = std::clamp(share, 0.0, 1.0);
    }
    scene.indicator = isLit(Track::rightIndicator) || isLit(Track::hazardLights);
    scene.door = isLit(Track::doorLight);
    scene.interior = isLit(Track::interiorLight);
    scene.beacon = isLit(Track::beacons) || isLit(Track::frontBeacon);
    scene.highBeam = isLit(Track::highBeam);
    scene.paint(painter, strip);

    painter.setPen(roadLineColor());
    const double edge = lineHeight() / 3;
    QString told = line_.phases.empty() ? QString() : moment();
    if (hurry() > 1 && !isStill())
        told += QStringLiteral("  (× %1)").arg(hurry());
    const QString shown =
        fontMetrics().elidedText(told, Qt::ElideRight, static_cast<int>(strip.width() * 0.75));
    painter.drawText(strip.adjusted(edge, edge / 2, -edge, 0), Qt::AlignLeft | Qt::AlignTop, shown);
    showPaused(painter, strip.topRight() + QPointF(-edge, edge / 2));
}

void TimeLinePicture::paintTrack(QPainter& painter, Track track, const QRectF& row) const
{
    const double line = lineHeight();
    const QColor text = palette().color(QPalette::WindowText);
    if (track != Track::driving) {
        const QRectF back(line * 0.2, row.center().y() - line * 0.45, line * 0.9, line * 0.9);
        painter.fillRect(back, roadColor());
        paintLamp(painter, back.adjusted(line * 0.2, line * 0.2, -line * 0.2, -line * 0.2), trackColor(track),
                  isLit(track) ? 1 : 0);
    }
    painter.setPen(text);
    const double room = labelWidth() - line * 1.7;
    painter.drawText(QRectF(line * 1.4, row.top(), room, row.height()), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(qtText(trackName(words().texts, track)), Qt::ElideRight,
                                              static_cast<int>(room)));
    for (const Phase& phase : line_.phases)
        if (phase.track == track)
            paintPhase(painter, phase, row);
}

void TimeLinePicture::paintPhase(QPainter& painter, const Phase& phase, const QRectF& row) const
{
    const QRectF area = plot();
    const double left = phase.from ? xOf(*phase.from) : area.left();
    const double right = phase.to ? xOf(*phase.to) : area.right();
    const QRectF bar(left, row.top() + row.height() * 0.14, std::max(right - left, 2.0), row.height() * 0.72);
    const QColor text = palette().color(QPalette::WindowText);
    const QColor base = palette().color(QPalette::Window);
    const bool open = !phase.from || !phase.to;
    QColor fill = mixed(base, trackColor(phase.track), 0.5);
    painter.setPen(Qt::NoPen);
    if (open) {
        QLinearGradient fading(phase.from ? bar.topRight() : bar.topLeft(), bar.center());
        fading.setColorAt(0, base);
        fading.setColorAt(1, fill);
        painter.setBrush(fading);
    } else {
        painter.setBrush(fill);
    }
    painter.drawRect(bar);
    if (phase.phaseLength > 0 && phase.from && phase.to) { // its dark halves
        const double dark = xOf(phase.phaseLength) - xOf(0);
        for (double x = bar.left() + dark; dark >= 2 && x < bar.right() - 1; x += 2 * dark)
            painter.fillRect(QRectF(x, bar.top(), std::min(dark, bar.right() - x), bar.height()), base);
    }
    painter.setBrush(phase.conflict ? QBrush(text, Qt::BDiagPattern) : QBrush(Qt::NoBrush));
    QPen outline(phase.conflict ? text : mixed(base, text, 0.65), phase.conflict ? 2 : 1);
    if (open)
        outline.setStyle(Qt::DashLine);
    painter.setPen(outline);
    painter.drawRect(bar);
    if (phase.track != Track::driving)
        return;
    const double inset = lineHeight() * 0.3;
    if (bar.width() < 4 * lineHeight())
        return;
    painter.setPen(text);
    painter.drawText(bar.adjusted(inset, 0, -inset, 0), Qt::AlignCenter,
                     fontMetrics().elidedText(qtText(phaseName(words().texts, line_, phase)), Qt::ElideRight,
                                              static_cast<int>(bar.width() - 2 * inset)));
}

void TimeLinePicture::paintAxis(QPainter& painter, double top, double bottom) const
{
    const double line = lineHeight();
    const double perPixel = std::max(line_.end, 1) / std::max(xOf(line_.end) - xOf(0), 1.0);
    const int step = axisStep(perPixel * line * 4);
    const QColor text = palette().color(QPalette::WindowText);
    for (int ms = 0; ms <= line_.end; ms += step) {
        const double x = xOf(ms);
        painter.setPen(QPen(mixed(palette().color(QPalette::Window), text, 0.3), 1));
        painter.drawLine(QPointF(x, top), QPointF(x, bottom + line * 0.2));
        painter.setPen(text);
        painter.drawText(QRectF(x - line * 3, bottom + line * 0.2, line * 6, line), Qt::AlignCenter,
                         ms == 0 ? QStringLiteral("0") : qtText(durationText(ms, words().decimalComma)));
    }
}

void TimeLinePicture::paintNotes(QPainter& painter, double top) const
{
    const double line = lineHeight();
    const QColor text = palette().color(QPalette::WindowText);
    for (const TimeLineNote& note : line_.notes) {
        const QRectF place = noteRect(note, top, width());
        const QRectF mark(line * 0.3, place.top() + line * 0.05, line * 0.9, line * 0.9);
        painter.setPen(QPen(text, 1.2));
        painter.setBrush(note.conflict ? QColor(255, 196, 0) : palette().color(QPalette::Window));
        if (note.conflict)
            painter.drawPolygon(
                QPolygonF({QPointF(mark.center().x(), mark.top()), mark.bottomRight(), mark.bottomLeft()}));
        else
            painter.drawEllipse(mark);
        painter.setPen(note.conflict ? QColor(Qt::black) : text);
        painter.drawText(mark.adjusted(0, note.conflict ? line * 0.15 : 0, 0, 0), Qt::AlignCenter,
                         note.conflict ? QStringLiteral("!") : QStringLiteral("i"));
        painter.setPen(text);
        painter.drawText(place, Qt::TextWordWrap, qtText(noteText(words().texts, note)));
        top = place.bottom() + line * 0.3;
    }
}

} // namespace karvo
