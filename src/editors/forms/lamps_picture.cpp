#include "editors/forms/lamps_picture.h"

#include "editors/forms/vehicle_drawing.h"
#include "ui/captions.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace karvo
{

namespace
{

constexpr double boxLines = 4.4;

QColor glassOf(ReceiverLamp::Glass glass)
{
    switch (glass) {
    case ReceiverLamp::Glass::red:
        return {255, 48, 40};
    case ReceiverLamp::Glass::yellow:
        return {255, 190, 30};
    case ReceiverLamp::Glass::green:
        return {50, 225, 110};
    default:
        return {255, 226, 150};
    }
}

} // namespace

LampsPicture::LampsPicture(const PictureWords& words, QWidget* parent)
    : MovingPicture(QStringLiteral("lamps"), words, Caption::pictureLamps, parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void LampsPicture::valuesChanged()
{
    lamps_ = receiverLamps(values());
    describe();
    updateGeometry();
    restart(now());
}

void LampsPicture::describe()
{
    QStringList all;
    QStringList lit;
    bool schematic = false;
    for (std::size_t place = 0; place < lamps_.size(); ++place) {
        all += qtText(lampText(words(), lamps_[place], static_cast<int>(place) + 1));
        schematic |= lamps_[place].rhythm.schematic;
        if (levelOf(lamps_[place]) > 0)
            lit += QString::number(place + 1);
    }
    if (isStepped())
        all.prepend(qtText(durationText(now(), words().decimalComma)) + QStringLiteral(": ") +
                    lit.join(QStringLiteral(", ")));
    const QString keys = qtText(words().texts.caption(Caption::pictureKeysHelp));
    const QString note = qtText(words().texts.caption(Caption::schematicNote));
    setToolTip(schematic ? keys + u'\n' + note : keys);
    if (schematic)
        all += note;
    if (!notInForce().isEmpty())
        all += notInForce();
    setAccessibleDescription(spoken(all));
}

bool LampsPicture::moves() const
{
    return std::any_of(lamps_.begin(), lamps_.end(),
                       [](const ReceiverLamp& lamp) { return periodOf(lamp.rhythm) > 0; });
}

QString LampsPicture::notInForce() const
{
    if (lampsInForce(values()))
        return {};
    const int mode = values()(9).value_or(0);
    const Text shown = joined({textFromNumber(mode), u": ", wordOf(words(), 9, mode)});
    return qtText(words().texts.message(Message::lampsNotInForce, {shown}));
}

double LampsPicture::lineHeight() const
{
    return QFontMetricsF(font()).height();
}

QRectF LampsPicture::box(double width) const
{
    const double wide = std::min(width, lineHeight() * 64);
    return {(width - wide) / 2, 0, wide, boxLines * lineHeight()};
}

QString LampsPicture::wordsOf(std::size_t place) const
{
    const QString text = qtText(lampText(words(), lamps_[place], static_cast<int>(place) + 1));
    return text.mid(text.indexOf(u' ') + 1);
}

// Below the box; as high as the longest needs.
QRectF LampsPicture::wordsBelow(const QRectF& column) const
{
    const double inset = lineHeight() * 0.2;
    QRectF area(column.left() + inset, (boxLines + 0.1) * lineHeight(), column.width() - 2 * inset, 0);
    for (std::size_t place = 0; place < lamps_.size(); ++place) {
        const QRectF room(area.topLeft(), QSizeF(area.width(), 10'000));
        const QRectF used =
            QFontMetricsF(font()).boundingRect(room, Qt::AlignHCenter | Qt::TextWordWrap, wordsOf(place));
        area.setHeight(std::max(area.height(), used.height()));
    }
    return area;
}

QRectF LampsPicture::columnOf(std::size_t place, double width) const
{
    const QRectF all = box(width);
    const double wide = all.width() / static_cast<double>(lamps_.size());
    return {all.left() + static_cast<double>(place) * wide, 0, wide, all.height()};
}

int LampsPicture::heightForWidth(int width) const
{
    double height = wordsBelow(columnOf(0, width)).bottom() + lineHeight() * 0.2;
    if (const QString note = notInForce(); !note.isEmpty())
        height +=
            QFontMetricsF(font()).boundingRect(QRectF(0, 0, width, 10'000), Qt::TextWordWrap, note).height();
    return static_cast<int>(std::ceil(height));
}

QSize LampsPicture::sizeHint() const
{
    const int width = static_cast<int>(lineHeight() * 46);
    return {width, heightForWidth(width)};
}

QSize LampsPicture::minimumSizeHint() const
{
    const int width = static_cast<int>(lineHeight() * 24);
    return {width, heightForWidth(width)};
}

// A still picture shows each lamp that is ever lit as lit.
double LampsPicture::levelOf(const ReceiverLamp& lamp) const
{
    if (isStill())
        return lamp.rhythm.kind == Rhythm::Kind::dark ? 0 : lamp.brightness;
    return levelAt(lamp.rhythm, now()) * lamp.brightness;
}

void LampsPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place = box(width());
    painter.setPen(
        QPen(hasFocus() ? palette().color(QPalette::Highlight) : roadLineColor(), hasFocus() ? 2 : 1));
    painter.setBrush(roadColor());
    painter.drawRoundedRect(place.adjusted(1, 1, -1, -1), lineHeight() / 2, lineHeight() / 2);
    for (std::size_t lamp = 0; lamp < lamps_.size(); ++lamp)
        paintLampOf(painter, lamp, columnOf(lamp, width()));
    painter.setPen(roadLineColor());
    showPaused(painter, place.topRight() + QPointF(-lineHeight() / 2, lineHeight() / 6));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(
        QRectF(0, wordsBelow(columnOf(0, width())).bottom() + lineHeight() * 0.2, width(), height()),
        Qt::TextWordWrap, notInForce());
}

void LampsPicture::paintLampOf(QPainter& painter, std::size_t place, const QRectF& column) const
{
    const ReceiverLamp& lamp = lamps_[place];
    const double line = lineHeight();
    const double size = std::min(line * 2, column.width() * 0.6);
    painter.save();
    painter.setClipRect(QRectF(column.left(), 0, column.width(), boxLines * line));
    paintLamp(painter, QRectF(column.center().x() - size / 2, line * 0.9, size, size), glassOf(lamp.glass),
              levelOf(lamp));
    painter.setPen(roadLineColor());
    painter.drawText(QRectF(column.left(), (boxLines - 1.3) * line, column.width(), line), Qt::AlignCenter,
                     QString::number(place + 1));
    painter.restore();
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(wordsBelow(column), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, wordsOf(place));
}

} // namespace karvo
