// The windows for servos: sliders that the decoder follows while they move.
#pragma once

#include "editors/live_follow.h"
#include "ui/editor_dialog.h"
#include "workbench/line_use.h"

#include <QTimer>

#include <optional>

class QLabel;
class QSlider;
class QSpinBox;

namespace karvo
{

class FormRows;

class LiveDialog : public EditorDialog
{
    Q_OBJECT

public:
    LiveDialog(Workbench& bench, LiveWindow window, const char* name, Caption title, QWidget* parent);

    // What is to be written, once the dialog was accepted.
    WritePlan plan() const { return setup_.plan(); }

    // Waits for the exchange under way.
    void done(int result) override;

protected:
    // While an exchange is under way the question waits for its end: a box would hold the exchange up.
    bool mayClose() override;
    void showEvent(QShowEvent* event) override;

private:
    struct Row {
        int cv;
        QSlider* slider;
        QSpinBox* number;
    };

    void build();
    void addControl(FormRows& rows, const LiveControl& control);
    void start();
    void tick();
    void move(const Row& row, int value);
    void checkTimes(int cv);
    bool mayWrite();
    void write();
    QString hint() const;
    void showClosing();
    void showValues();
    void afterExchange();

    Workbench& bench_;
    LineUse line_; // the decoder is spoken to as long as the window stands open
    const LiveWindow window_;
    LiveSetup setup_;
    LiveFollow follow_;
    const std::optional<Text> withoutPower_; // what is said of it
    QTimer timer_;
    QList<Row> rows_;
    QLabel* note_;
    QPushButton* writing_ = nullptr;
    int lastTime_ = 0; // the time that was changed last
    bool showing_ = false;
    bool finishing_ = false;
    bool closeAsked_ = false;         // to be asked about after the exchange under way
    std::optional<int> wantedResult_; // the window is to close after the exchange under way
};

// The receiver's servos together.
class Servo_Setup2 : public LiveDialog
{
    Q_OBJECT
public:
    explicit Servo_Setup2(Workbench& bench, QWidget* parent = nullptr);
};

// A vehicle's first servo.
class Servo_Setup3 : public LiveDialog
{
    Q_OBJECT
public:
    explicit Servo_Setup3(Workbench& bench, QWidget* parent = nullptr);
};

// A vehicle's second servo.
class Servo_Setup4 : public LiveDialog
{
    Q_OBJECT
public:
    explicit Servo_Setup4(Workbench& bench, QWidget* parent = nullptr);
};

// When a servo returns, or how it sweeps.
class RZeit_Setup : public LiveDialog
{
    Q_OBJECT
public:
    explicit RZeit_Setup(Workbench& bench, QWidget* parent = nullptr);
};

} // namespace karvo
