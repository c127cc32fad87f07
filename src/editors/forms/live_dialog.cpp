#include "editors/forms/live_dialog.h"

#include "ui/captions.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QSlider>
#include <QSpinBox>

namespace karvo
{

namespace
{

constexpr int highestValue = 255;
constexpr int pageStep = 10;

QLabel* asNote(QLabel* label, const QString& name)
{
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(60 * label->fontMetrics().averageCharWidth());
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

} // namespace

LiveDialog::LiveDialog(Workbench& bench, LiveWindow window, const QString& name, Caption title,
                       QWidget* parent)
    : QDialog(parent),
      bench_(bench),
      texts_(bench.state.texts),
      line_(bench),
      window_(window),
      setup_(window, bench.state.set.table),
      follow_(bench, setup_),
      withoutPower_(servoWithoutPower(window, bench.state.set, texts_)),
      timer_(this), // found by its name among the window's own
      note_(new QLabel(this))
{
    setObjectName(name);
    setWindowTitle(qtText(texts_.caption(title)));
    timer_.setObjectName(QStringLiteral("Timer1"));
    timer_.setInterval(liveTick);
    connect(&timer_, &QTimer::timeout, this, &LiveDialog::tick);
    build();
    showValues();
}

void LiveDialog::build()
{
    auto* const column = new QVBoxLayout(this);
    auto* const grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    for (const LiveControl& control : setup_.controls())
        addControl(*grid, control);
    column->addLayout(grid);
    if (const QString words = hint(); !words.isEmpty())
        column->addWidget(asNote(new QLabel(words, this), QStringLiteral("Hint")));
    asNote(note_, QStringLiteral("Note"))->setText(qtText(texts_.caption(Caption::liveRunning)));
    note_->setMinimumHeight(3 * fontMetrics().height()); // so that the window does not jump
    column->addWidget(note_);
    column->addStretch(1);
    column->addWidget(buttons());
}

// What the person has to know before he begins.
QString LiveDialog::hint() const
{
    QStringList lines;
    if (window_ == LiveWindow::firstServo || window_ == LiveWindow::secondServo)
        lines.append(qtText(texts_.caption(Caption::servosShareCvs)));
    if (withoutPower_)
        lines.append(qtText(*withoutPower_));
    return lines.join(QLatin1Char('\n'));
}

void LiveDialog::addControl(QGridLayout& grid, const LiveControl& control)
{
    const QString name = qtText(texts_.caption(control.caption));
    const Row row = {control.cv, new QSlider(Qt::Horizontal, this), new QSpinBox(this)};
    auto* const label = new QLabel(buttonText(texts_.caption(control.caption)), this);
    label->setBuddy(row.slider);
    row.slider->setObjectName(QStringLiteral("Slider%1").arg(control.cv));
    row.slider->setRange(0, highestValue);
    row.slider->setPageStep(pageStep);
    row.slider->setMinimumWidth(25 * fontMetrics().averageCharWidth());
    row.slider->setAccessibleName(name);
    row.number->setObjectName(QStringLiteral("Number%1").arg(control.cv));
    row.number->setRange(0, highestValue);
    row.number->setKeyboardTracking(false); // a number counts once it is complete
    row.number->setAccessibleName(name);
    connect(row.slider, &QSlider::valueChanged, this, [this, row](int value) { move(row, value); });
    connect(row.slider, &QSlider::sliderReleased, this, [this, row] { checkTimes(row.cv); });
    connect(row.number, &QSpinBox::valueChanged, this, [this, row](int value) { move(row, value); });
    const int line = grid.rowCount();
    grid.addWidget(label, line, 0);
    grid.addWidget(row.slider, line, 1);
    grid.addWidget(row.number, line, 2);
    if (!control.followed)
        grid.addWidget(new QLabel(qtText(texts_.caption(Caption::liveUntouched)), this), line + 1, 1);
    rows_.append(row);
}

QWidget* LiveDialog::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    writing_ =
        box->addButton(buttonText(texts_.caption(Caption::writeToVehicle)), QDialogButtonBox::ActionRole);
    writing_->setObjectName(QStringLiteral("OKButton"));
    writing_->setAutoDefault(false); // Enter ends the entry of a number
    auto* const cancel =
        box->addButton(buttonText(texts_.caption(Caption::cancelButton)), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setAutoDefault(false);
    connect(writing_, &QPushButton::clicked, this, &LiveDialog::write);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
}

// The first exchange has to wait for the window: it lets events run.
void LiveDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
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
    note_->setText(qtText(texts_.caption(follow_.isFollowing() ? Caption::liveRunning : stopped)));
    if (follow_.hasEnded())
        wantedResult_ = QDialog::Rejected;
    if (wantedResult_ && !follow_.isUnderWay())
        done(*wantedResult_);
}

// On a mute line the exchange under way may take its whole time-out.
void LiveDialog::showClosing()
{
    note_->setText(qtText(texts_.caption(Caption::liveClosing)));
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
    QDialog::done(result);
}

Servo_Setup2::Servo_Setup2(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::bothServos, QStringLiteral("Servo_Setup2"), Caption::servoTitle, parent)
{
}

Servo_Setup3::Servo_Setup3(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::firstServo, QStringLiteral("Servo_Setup3"), Caption::servo1Title, parent)
{
}

Servo_Setup4::Servo_Setup4(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::secondServo, QStringLiteral("Servo_Setup4"), Caption::servo2Title, parent)
{
}

RZeit_Setup::RZeit_Setup(Workbench& bench, QWidget* parent)
    : LiveDialog(bench, LiveWindow::times, QStringLiteral("RZeit_Setup"), Caption::servoTimesTitle, parent)
{
}

} // namespace karvo
