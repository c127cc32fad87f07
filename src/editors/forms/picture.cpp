#include "editors/forms/picture.h"

#include "editors/forms/key_map_picture.h"
#include "editors/forms/lamps_picture.h"
#include "editors/forms/lane_picture.h"
#include "editors/forms/lights_picture.h"
#include "editors/forms/time_line_picture.h"
#include "ui/captions.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace karvo
{

namespace
{

constexpr int frameLength = 33; // ms

} // namespace

Picture::Picture(const QString& name, PictureWords words, Caption title, QWidget* parent)
    : QWidget(parent), words_(std::move(words)), values_([](int) { return std::nullopt; })
{
    setObjectName(name);
    setAccessibleName(qtText(words_.texts.caption(title)));
}

void Picture::setValues(PictureValues values)
{
    values_ = std::move(values);
    valuesChanged();
}

MovingPicture::MovingPicture(const QString& name, PictureWords words, Caption title, QWidget* parent)
    : Picture(name, std::move(words), title, parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(qtText(this->words().texts.caption(Caption::pictureKeysHelp)));
    timer_.setInterval(frameLength);
    connect(&timer_, &QTimer::timeout, this, &MovingPicture::advance);
}

void MovingPicture::setAnimated(bool animated)
{
    animated_ = animated;
    stepped_ = false;
    goOn();
    update();
}

void MovingPicture::restart(int ms)
{
    now_ = following(ms);
    goOn();
    update();
}

void MovingPicture::pause(bool paused)
{
    paused_ = paused;
    goOn();
    update();
}

void MovingPicture::goOn()
{
    clock_.start();
    if (animated_ && !paused_ && isVisible() && moves())
        timer_.start();
    else
        timer_.stop();
}

void MovingPicture::advance()
{
    now_ = following(now_ + static_cast<int>(clock_.restart()));
    update();
}

void MovingPicture::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && animated_) {
        pause(!paused_);
    } else if (event->key() == Qt::Key_Right) {
        stepped_ = true;
        now_ = following(now_ + stepLength());
        pause(true);
        describe();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void MovingPicture::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && animated_)
        pause(!paused_);
}

void MovingPicture::showEvent(QShowEvent*)
{
    goOn();
}

void MovingPicture::hideEvent(QHideEvent*)
{
    timer_.stop();
}

void MovingPicture::showPaused(QPainter& painter, const QPointF& topRight) const
{
    if (!paused_ || !moves())
        return;
    const QString text = qtText(words().texts.caption(Caption::picturePaused));
    const double line = fontMetrics().height();
    const double width = fontMetrics().horizontalAdvance(text);
    painter.drawText(QRectF(topRight.x() - width, topRight.y(), width, line), Qt::AlignCenter, text);
    const double bar = line / 6;
    for (const double x : {topRight.x() - width - 3 * bar, topRight.x() - width - 5 * bar})
        painter.fillRect(QRectF(x, topRight.y() + line * 0.2, bar, line * 0.6), painter.pen().color());
}

QColor mixed(const QColor& one, const QColor& other, double share)
{
    const auto part = [share](int from, int to) { return static_cast<int>(from + (to - from) * share); };
    return {part(one.red(), other.red()), part(one.green(), other.green()), part(one.blue(), other.blue())};
}

QString spoken(const QStringList& sentences)
{
    QString all;
    for (const QString& sentence : sentences)
        all += (all.isEmpty() ? QString() : QStringLiteral(" ")) + sentence +
               (sentence.endsWith(u'.') || sentence.endsWith(u':') ? QString() : QStringLiteral("."));
    return all;
}

Picture* makePicture(std::string_view name, const PictureWords& words, bool trailer, QWidget* parent)
{
    if (name == "lights")
        return new LightsPicture(words, trailer, parent);
    if (name == "bus_stop")
        return new TimeLinePicture(words, TimeLinePicture::Kind::busStop, parent);
    if (name == "emergency_run")
        return new TimeLinePicture(words, TimeLinePicture::Kind::emergencyRun, parent);
    if (name == "lamps")
        return new LampsPicture(words, parent);
    if (name == "keys")
        return new KeyMapPicture(words, parent);
    if (name == "lane")
        return new LanePicture(words, parent);
    return nullptr;
}

} // namespace karvo
