// A picture in a function sheet: it shows what values of CVs do.
#pragma once

#include "editors/picture_values.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <string_view>

namespace karvo
{

class Picture : public QWidget
{
    Q_OBJECT

public:
    Picture(const QString& name, PictureWords words, Caption title, QWidget* parent);

    // Shows these; `values` is kept and asked until the next call.
    void setValues(PictureValues values);

    // Still pictures where not; where nobody says otherwise, they move.
    virtual void setAnimated(bool animated) = 0;

signals:
    // A value was chosen in the picture. Whoever shows it takes it into the values and sets them anew.
    void changed(int cv, int value);

protected:
    virtual void valuesChanged() = 0;

    const PictureValues& values() const { return values_; }
    const PictureWords& words() const { return words_; }

private:
    PictureWords words_;
    PictureValues values_;
};

// Moves while it is seen, unless it is paused: by the space bar or a click. The right arrow moves it on by a
// step.
class MovingPicture : public Picture
{
    Q_OBJECT

public:
    MovingPicture(const QString& name, PictureWords words, Caption title, QWidget* parent);

    void setAnimated(bool animated) override;
    bool isPaused() const { return paused_; }

protected:
    // Whether anything changes with time.
    virtual bool moves() const = 0;
    virtual int stepLength() const { return 50; } // ms
    // Where to go on behind `ms`; a picture that ends begins anew.
    virtual int following(int ms) const { return ms; }

    // Sets the accessible description anew, from what is shown and, where the picture was stepped, from the
    // moment.
    virtual void describe() = 0;
    bool isStepped() const { return stepped_; }

    // ms since the beginning.
    int now() const { return now_; }
    // Neither moving nor moved by steps: what is shown stands for the whole.
    bool isStill() const { return !animated_ && !stepped_; }
    void restart(int ms = 0);
    void showPaused(QPainter& painter, const QPointF& topRight) const;

    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void pause(bool paused);
    void goOn();
    void advance();

    QTimer timer_;
    QElapsedTimer clock_;
    int now_ = 0;
    bool animated_ = true;
    bool paused_ = false;
    bool stepped_ = false;
};

// `share` of the second colour in the first.
QColor mixed(const QColor& one, const QColor& other, double share);

// Sentences behind each other, for what a picture says.
QString spoken(const QStringList& sentences);

// The picture that a sheet names: "lights", "bus_stop", "emergency_run", "lamps", "keys" or "lane".
// `trailer`: the model is one. Null for another name.
Picture* makePicture(std::string_view name, const PictureWords& words, bool trailer, QWidget* parent);

} // namespace karvo
