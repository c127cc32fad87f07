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

// Beside each other, or in their two groups where the words had no room.
int LampsPicture::columnsIn(double width) const
{
    return width < 44 * lineHeight() ? 4 : 8;
}

QRectF LampsPicture::cellOf(std::size_t place, double width) const
{
    const double usual = std::min(width, lineHeight() * 64);
    const int columns = columnsIn(width);
    const int number = static_cast<int>(place);
    const double wide = usual / columns;
    const double high = boxLines * lineHeight() + wordsHeight(wide);
    return {(width - usual) / 2 + number % columns * wide, number / columns * high, wide, high};
}

QString LampsPicture::wordsOf(std::size_t place) const
{
    const QString text = qtText(lampText(words(), lamps_[place], static_cast<int>(place) + 1));
    return text.mid(text.indexOf(u' ') + 1);
}

// As high as the longest needs in a column of that width.
double LampsPicture::wordsHeight(double width) const
{
    double height = 0;
    const QRectF room(0, 0, width - lineHeight() * 0.4, 10'000);
    for (std::size_t place = 0; place < lamps_.size(); ++place)
        height = std::max(height, QFontMetricsF(font())
                                      .boundingRect(room, Qt::AlignHCenter | Qt::TextWordWrap, wordsOf(place))
                                      .height());
    return height + lineHeight() * 0.3;
}

int LampsPicture::heightForWidth(int width) const
{
    double height = cellOf(lamps_.size() - 1, width).bottom();
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
    const std::size_t columns = static_cast<std::size_t>(columnsIn(width()));
    const double line = lineHeight();
    for (std::size_t first = 0; first < lamps_.size(); first += columns) {
        const QRectF left = cellOf(first, width());
        const QRectF right = cellOf(first + columns - 1, width());
        const QRectF box(left.left(), left.top(), right.right() - left.left(), boxLines * line);
        painter.setPen(
            QPen(hasFocus() ? palette().color(QPalette::Highlight) : roadLineColor(), hasFocus() ? 2 : 1));
        painter.setBrush(roadColor());
        painter.drawRoundedRect(box.adjusted(1, 1, -1, -1), line / 2, line / 2);
    }
    for (std::size_t place = 0; place < lamps_.size(); ++place)
        paintLampIn(painter, place, cellOf(place, width()));
    painter.setPen(roadLineColor());
    showPaused(painter, cellOf(columns - 1, width()).topRight() + QPointF(-line / 2, line / 6));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRectF(0, cellOf(lamps_.size() - 1, width()).bottom(), width(), height()),
                     Qt::TextWordWrap, notInForce());
}

void LampsPicture::paintLampIn(QPainter& painter, std::size_t place, const QRectF& cell) const
{
    const ReceiverLamp& lamp = lamps_[place];
    const double line = lineHeight();
    const double size = std::min(line * 2, cell.width() * 0.6);
    const QRectF box(cell.left(), cell.top(), cell.width(), boxLines * line);
    painter.save();
    painter.setClipRect(box);
    paintLamp(painter, QRectF(cell.center().x() - size / 2, cell.top() + line * 0.9, size, size),
              glassOf(lamp.glass), levelOf(lamp));
    painter.setPen(roadLineColor());
    painter.drawText(QRectF(cell.left(), box.bottom() - line * 1.3, cell.width(), line), Qt::AlignCenter,
                     QString::number(place + 1));
    painter.restore();
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRectF(cell.left() + line * 0.2, box.bottom() + line * 0.1, cell.width() - line * 0.4,
                            cell.height() - box.height()),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, wordsOf(place));
}

} // namespace karvo
