#include "shell/status_line.h"

#include "ui/captions.h"
#include "ui/named.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>

namespace karvo
{

namespace
{

// The bar moves in steps of this many parts, so that drawing it stays cheap while bytes come in one by one.
constexpr std::size_t progressSteps = 64;

constexpr char16_t filledSign = u'\u25CF';
constexpr char16_t hollowSign = u'\u25CB';

} // namespace

StatusLine::StatusLine(bool simulated, QWidget* parent)
    : QStatusBar(parent),
      status_(named<QLabel>("Status", this)),
      progress_(named<QProgressBar>("Progress", this)),
      stop_(named<QPushButton>("Anhalten", this)),
      sign_(named<QLabel>("LineSign", this)),
      version_(named<QLabel>("Version", this)),
      blinkTimer_(this)
{
    progress_->setMaximumHeight(status_->fontMetrics().height() + 4);
    progress_->hide();
    stop_->hide();
    connect(stop_, &QPushButton::clicked, this, [this] {
        showStopping(true);
        emit stopWanted();
    });
    auto* const escape = new QShortcut(QKeySequence(Qt::Key_Escape), stop_);
    connect(escape, &QShortcut::activated, stop_, &QPushButton::click);
    blinkTimer_.setObjectName(QStringLiteral("Timer2"));
    blinkTimer_.setInterval(750);
    connect(&blinkTimer_, &QTimer::timeout, this, &StatusLine::blink);
    sign_->setFixedWidth(sign_->fontMetrics().horizontalAdvance(filledSign) + 4);
    sign_->setAlignment(Qt::AlignCenter);
    status_->setIndent(status_->fontMetrics().averageCharWidth());
    status_->setTextFormat(Qt::PlainText); // it may tell what a file holds
    addWidget(status_, 2);
    addWidget(progress_, 1);
    addPermanentWidget(stop_); // a tip that is shown meanwhile does not take it away
    addPermanentWidget(sign_);
    if (simulated) {
        simulation_ = named<QLabel>("Simulation", this);
        addPermanentWidget(simulation_);
    }
    addPermanentWidget(version_);
}

void StatusLine::applyCaptions(const LanguageTables& texts)
{
    sign_->setToolTip(qtText(texts.caption(Caption::lineInUse)));
    sign_->setAccessibleName(sign_->toolTip());
    progress_->setAccessibleName(qtText(texts.caption(Caption::readAll)));
    stopCaption_ = buttonText(texts.caption(Caption::stopWriting));
    stopReadingCaption_ = buttonText(texts.caption(Caption::stopReading));
    stoppingCaption_ = buttonText(texts.caption(Caption::stoppingWrite));
    showStopping(false);
    if (simulation_ != nullptr)
        simulation_->setText(qtText(texts.caption(Caption::simulatedInterface)));
}

void StatusLine::showStatus(const QString& text)
{
    status_->setText(text);
}

void StatusLine::showProgress(const LanguageTables& texts, std::size_t done, std::size_t total)
{
    if (total == 0) {
        progress_->hide();
        return;
    }
    const auto step = static_cast<int>(std::min(done, total) * progressSteps / total);
    if (progress_->isVisible() && progress_->value() == step)
        return;
    progress_->setRange(0, static_cast<int>(progressSteps));
    progress_->setValue(step);
    progress_->setFormat(filledCaption(
        texts, Caption::bytesReceived,
        {textFromNumber(static_cast<long long>(done)), textFromNumber(static_cast<long long>(total))}));
    progress_->show();
}

void StatusLine::showWriteProgress(const LanguageTables& texts, int cv, std::size_t remaining)
{
    if (cv == 0) {
        progress_->hide();
        withdrawStop();
        return;
    }
    if (!stop_->isVisible()) {
        toWrite_ = remaining + 1;
        offerStop();
    }
    progress_->setRange(0, static_cast<int>(toWrite_));
    progress_->setValue(static_cast<int>(toWrite_ - std::min(remaining + 1, toWrite_)));
    progress_->setFormat(
        filledCaption(texts, Caption::writeProgress,
                      {textFromNumber(cv), textFromNumber(static_cast<long long>(remaining))}));
    progress_->show();
}

void StatusLine::showReading(bool underWay)
{
    reading_ = underWay;
    if (underWay)
        offerStop();
    else
        withdrawStop();
}

void StatusLine::offerStop()
{
    showStopping(false);
    focusBefore_ = window()->focusWidget();
    stop_->show();
    stop_->setFocus();
}

void StatusLine::withdrawStop()
{
    if (stop_->hasFocus() && focusBefore_ != nullptr)
        focusBefore_->setFocus();
    stop_->hide();
    showStopping(false);
}

// A read ends at once, a write after its CV.
void StatusLine::showStopping(bool stopping)
{
    stop_->setEnabled(!stopping);
    if (reading_)
        stop_->setText(stopReadingCaption_);
    else
        stop_->setText(stopping ? stoppingCaption_ : stopCaption_);
}

void StatusLine::showVersion(const QString& version)
{
    version_->setText(version);
}

void StatusLine::blink()
{
    sign_->setText(QString(sign_->text() == QString(filledSign) ? QChar(hollowSign) : QChar(filledSign)));
}

void StatusLine::setLineBusy(bool busy)
{
    if (busy) {
        blink();
        blinkTimer_.start();
    } else {
        blinkTimer_.stop();
        sign_->clear();
    }
}

} // namespace karvo
