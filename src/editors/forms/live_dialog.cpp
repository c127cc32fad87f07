#include "editors/forms/live_dialog.h"

#include "ui/captions.h"
#include "ui/form_rows.h"
#include "ui/named.h"

#include <QShowEvent>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

#include <utility>

namespace karvo
{

namespace
{

constexpr int highestValue = 255;
constexpr int pageStep = 10;

QLabel* note(const char* name, QWidget* parent, const QString& text)
{
    auto* const label = textLabel(name, parent, text);
    label->setMinimumWidth(60 * label->fontMetrics().averageCharWidth());
    return label;
}

} // namespace

LiveDialog::LiveDialog(Workbench& bench, LiveWindow window, const char* name, Caption title, QWidget* parent)
    : EditorDialog(bench.state.texts, name, title, parent),
      bench_(bench),
      line_(bench),
      window_(window),
      setup_(window, bench.state.set.table),
      follow_(bench, setup_),
      withoutPower_(servoWithoutPower(window, bench.state.set, texts_)),
      timer_(this), // found by its name among the window's own
      note_(note("Note", this, shown(Caption::liveRunning)))
{
    timer_.setObjectName(QStringLiteral("Timer1"));
    timer_.setInterval(liveTick);
    connect(&timer_, &QTimer::timeout, this, &LiveDialog::tick);
    build();
    showValues();
    nothingToLose();
}

void LiveDialog::build()
{
    auto* const rows = new FormRows;
    column().addLayout(rows);
    for (const LiveControl& control : setup_.controls())
        addControl(*rows, control);
    if (const QString words = hint(); !words.isEmpty())
        column().addWidget(note("Hint", this, words));
    note_->setMinimumHeight(3 * fontMetrics().height()); // so that the window does not jump
    column().addWidget(note_);
    column().addStretch(1);
    writing_ = addWriting("OKButton", Caption::writeToVehicle);
    connect(writing_, &QPushButton::clicked, this, &LiveDialog::write);
    addButton("CancelButton", Caption::cancelButton, ButtonRow::RejectRole);
}

// What the person has to know before he begins.
QString LiveDialog::hint() const
{
    QStringList lines;
    if (window_ == LiveWindow::firstServo || window_ == LiveWindow::secondServo)
        lines.append(shown(Caption::servosShareCvs));
    if (withoutPower_)
        lines.append(qtText(*withoutPower_));
    return lines.join(QLatin1Char('\n'));
}

void LiveDialog::addControl(FormRows& rows, const LiveControl& control)
{
    const std::string cv = std::to_string(control.cv);
    const Row row = {control.cv, named<QSlider>(("Slider" + cv).c_str(), this),
                     named<QSpinBox>(("Number" + cv).c_str(), this, shown(control.caption))};
    row.slider->setOrientation(Qt::Horizontal);
    row.slider->setRange(0, highestValue);
    row.slider->setPageStep(pageStep);
    row.slider->setMinimumWidth(25 * fontMetrics().averageCharWidth());
    row.number->setRange(0, highestValue);
    row.number->setKeyboardTracking(false); // a number counts once it is complete
    connect(row.slider, &QSlider::valueChanged, this, [this, row](int value) { move(row, value); });
    connect(row.slider, &QSlider::sliderReleased, this, [this, row] { checkTimes(row.cv); });
    connect(row.number, &QSpinBox::valueChanged, this, [this, row](int value) { move(row, value); });
    rows.add(*row.slider, shown(control.caption), *row.number);
    if (!control.followed)
        rows.addBelow(*textLabel("", this, shown(Caption::liveUntouched)));
    rows_.append(row);
}

// The first exchange has to wait for the window: it lets events run.
void LiveDialog::showEvent(QShowEvent* event)
{
    EditorDialog::showEvent(event);
    if (!event->spontaneous())
        QTimer::singleShot(0, this, &LiveDialog::start);
}

void LiveDialog::start()
{
    timer_.start();
    follow_.open();
    afterExchange();
}

void LiveDialog::tick()
{
    if (follow_.isUnderWay())
        return;
    follow_.tick();
    afterExchange();
}

void LiveDialog::move(const Row& row, int value)
{
    if (showing_ || wantedResult_)
        return;
    setup_.move(row.cv, value);
    showValues();
    if (!row.slider->isSliderDown())
        checkTimes(row.cv);
    const bool first = !follow_.isUnderWay();
    follow_.moved();
    if (first)
        afterExchange();
}

void LiveDialog::checkTimes(int cv)
{
    lastTime_ = cv;
    mayWrite();
}

// False when a value had to go; the person has been told and sees what is left.
bool LiveDialog::mayWrite()
{
    const auto words = setup_.clearExcluded(lastTime_, texts_);
    if (!words)
        return true;
    showValues();
    bench_.prompts.message(*words, PromptIcon::information);
    return false;
}

void LiveDialog::write()
{
    if (!mayWrite())
        return;
    const Text question = Text(lineBreak) + texts_.message(Message::writeServoQuestion);
    if (!withoutPower_ || bench_.prompts.question(*withoutPower_ + question))
        accept();
}

void LiveDialog::showValues()
{
    showing_ = true;
    for (const Row& row : rows_) {
        row.slider->setValue(setup_.valueOf(row.cv));
        row.number->setValue(setup_.valueOf(row.cv));
    }
    showing_ = false;
}

void LiveDialog::afterExchange()
{
    const Caption stopped = follow_.hasLostLine() ? Caption::liveLineGone : Caption::liveStopped;
    note_->setText(shown(follow_.isFollowing() ? Caption::liveRunning : stopped));
    if (follow_.hasEnded())
        wantedResult_ = QDialog::Rejected;
    if (follow_.isUnderWay())
        return;
    const bool closeAsked = std::exchange(closeAsked_, false);
    if (wantedResult_)
        done(*wantedResult_);
    else if (closeAsked)
        reject();
}

bool LiveDialog::mayClose()
{
    if (!follow_.isUnderWay() || !holdsWork())
        return EditorDialog::mayClose();
    closeAsked_ = true;
    note_->setText(shown(Caption::liveClosing));
    return false;
}

// On a mute line the exchange under way may take its whole time-out.
void LiveDialog::showClosing()
{
    note_->setText(shown(Caption::liveClosing));
    writing_->setEnabled(false);
    for (const Row& row : rows_) {
        row.slider->setEnabled(false);
        row.number->setEnabled(false);
    }
}

void LiveDialog::done(int result)
{
    wantedResult_ = result;
    follow_.stop();
    timer_.stop();
    if (follow_.isUnderWay())
        showClosing();
    if (follow_.isUnderWay() || finishing_)
        return;
    finishing_ = true;
    if (result == QDialog::Rejected)
        follow_.restore();
    EditorDialog::done(result);
}

Servo_Setup2::Servo_Setup2(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::bothServos, "Servo_Setup2", Caption::servoTitle, parent)
{
}

Servo_Setup3::Servo_Setup3(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::firstServo, "Servo_Setup3", Caption::servo1Title, parent)
{
}

Servo_Setup4::Servo_Setup4(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::secondServo, "Servo_Setup4", Caption::servo2Title, parent)
{
}

RZeit_Setup::RZeit_Setup(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::times, "RZeit_Setup", Caption::servoTimesTitle, parent)
{
}

} // namespace karvo
