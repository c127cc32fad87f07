// The speed table as bars that can be dragged.
#pragma once

#include "editors/speed_curves.h"

#include <QWidget>

#include <functional>

namespace karvo
{

// One step is always chosen: by the mouse, or with Left, Right, Home and End. Its value follows the mouse, Up
// and Down (1), Page Up and Page Down (10), and stays within the limits.
class StepGraph : public QWidget
{
    Q_OBJECT

public:
    explicit StepGraph(QWidget* parent = nullptr);

    // The words for a step and its value.
    void speakWith(std::function<QString(int step, int value)> spoken) { spoken_ = std::move(spoken); }

    struct Picture {
        SpeedTable shown{};
        SpeedTable taken{}; // behind them
        int lowest = 0;
        int highest = 255; // what a bar can be moved to; the scale reaches as far as a value lies beyond
    };
    void show(const Picture& picture);
    using QWidget::show;

    void choose(int step);
    int chosenStep() const { return chosen_; } // 1 to 28
    int chosenValue() const { return picture_.shown[static_cast<std::size_t>(chosen_ - 1)]; }
    QString spokenValue() const { return spoken_(chosen_, chosenValue()); }
    int lowest() const { return picture_.lowest; }
    int highest() const { return picture_.highest; }

    // The bars are only looked at.
    void setReadOnly(bool readOnly) { readOnly_ = readOnly; }

    // Where a bar of that value ends, in the middle of its column.
    QPoint endOfBar(int step, int value) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void stepChosen(int step);
    void valueWanted(int step, int value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int scale() const;
    QRectF plot() const;
    QRectF column(int step) const;
    double height(int value) const;
    int stepAt(double x) const;
    int valueAt(double y) const;
    void want(int value);
    bool pressKey(int key);

    void paintAxes(QPainter& painter) const;
    void paintBars(QPainter& painter) const;
    void paintChosen(QPainter& painter) const;

    std::function<QString(int, int)> spoken_;
    Picture picture_;
    int chosen_ = 1;
    bool readOnly_ = false;
    bool dragging_ = false;
};

} // namespace karvo
