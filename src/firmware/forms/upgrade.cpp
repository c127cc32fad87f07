#include "firmware/forms/upgrade.h"

#include "firmware/upload_verdict.h"
#include "ui/captions.h"
#include "ui/fixed_width_font.h"
#include "ui/named.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

Text numberText(std::size_t number)
{
    return textFromNumber(static_cast<long long>(number));
}

} // namespace

Upgrade::Upgrade(Workbench& bench, HexImage image, QWidget* parent)
    : Form(bench.state.texts, "Upgrade", Caption::uploadTitle, parent),
      bench_(bench),
      image_(std::move(image)),
      phase_(textLabel("Phase", this)),
      notice_(textLabel("Notice", this)),
      timeLeft_(textLabel("TimeLeft", this)),
      progress_(named<QProgressBar>("Progress", this, shown(Caption::transferProgress))),
      log_(named<QPlainTextEdit>("Log", this, shown(Caption::uploadLog))),
      copy_(addButton("CopyLog", Caption::copyLog, ButtonRow::ActionRole)),
      close_(addButton("Close", Caption::closeButton, ButtonRow::RejectRole)),
      stopQuestion_(bench.state)
{
    build();
}

void Upgrade::build()
{
    setUsualSize({fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 22});
    notice_->hide();
    progress_->setRange(0, 100);
    log_->setReadOnly(true);
    log_->setFont(fixedWidthFont());
    log_->setTabChangesFocus(true);
    copy_->setEnabled(false);
    for (QWidget* const part : {static_cast<QWidget*>(phase_), static_cast<QWidget*>(notice_),
                                static_cast<QWidget*>(progress_), static_cast<QWidget*>(timeLeft_)})
        column().addWidget(part);
    column().addWidget(log_, 1);
    connect(copy_, &QPushButton::clicked, this, &Upgrade::copyLog);
}

void Upgrade::showEvent(QShowEvent* event)
{
    Form::showEvent(event);
    if (started_)
        return;
    started_ = true;
    running_ = true;
    QTimer::singleShot(0, this, &Upgrade::upload);
}

void Upgrade::upload()
{
    const auto report = uploadImage(bench_, image_, *this);
    running_ = false;
    stopQuestion_.withdraw();
    showReport(report);
    if (report.end == UploadEnd::ended || report.end == UploadEnd::portRefused)
        done(Rejected);
    emit transferEnded();
}

void Upgrade::showUpload(const UploadProgress& progress)
{
    phase_->setText(filledCaption(texts_, captionOfPhase(progress.phase),
                                  {numberText(progress.page), numberText(progress.pages)}));
    if (progress.phase == UploadPhase::erase)
        stopQuestion_.renew();
    if (progress.page == 0)
        return;
    if (progress.page == 1)
        sincePages_.start();
    progress_->setValue(static_cast<int>((progress.page - 1) * 100 / progress.pages));
    timeLeft_->setText(timeLeft(progress));
}

void Upgrade::showStep(const UploadStep& step)
{
    log_->appendPlainText(qtText(uploadLog(texts_, step)));
    copy_->setEnabled(true);
    if (!step.reply.empty())
        showNotice({});
}

void Upgrade::showSilence(EraseState erase)
{
    showNotice(shown(Caption::noLoaderReplies));
    stopQuestion_.ask(this, texts_.message(erase == EraseState::untouched ? Message::noLoaderQuestion
                                                                          : Message::loaderSilentQuestion));
}

void Upgrade::showNotice(const QString& notice)
{
    notice_->setText(notice);
    notice_->setVisible(!notice.isEmpty());
}

// As the pages so far have taken; nothing before the first has.
QString Upgrade::timeLeft(const UploadProgress& progress) const
{
    const auto done = static_cast<qint64>(progress.page) - 1;
    if (done == 0)
        return {};
    const qint64 remaining = static_cast<qint64>(progress.pages) - done;
    const qint64 seconds = (sincePages_.elapsed() * remaining / done + 999) / 1000;
    const QString text = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return filledCaption(texts_, Caption::timeLeft, {Text(text.toStdU16String())});
}

void Upgrade::showReport(const UploadReport& report)
{
    if (report.end == UploadEnd::sent)
        progress_->setValue(100);
    phase_->setText(qtText(uploadVerdict(texts_, report)));
    showNotice({});
    timeLeft_->clear();
    close_->setFocus();
}

void Upgrade::copyLog()
{
    QGuiApplication::clipboard()->setText(phase_->text() + QLatin1Char('\n') + log_->toPlainText());
}

bool Upgrade::mayClose()
{
    if (running_)
        stopQuestion_.ask(this);
    return !running_;
}

} // namespace karvo
