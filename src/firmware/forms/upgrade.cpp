#include "firmware/forms/upgrade.h"

#include "firmware/upload_verdict.h"
#include "ui/captions.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
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
    : QDialog(parent),
      bench_(bench),
      texts_(bench.state.texts),
      image_(std::move(image)),
      phase_(new QLabel(this)),
      notice_(new QLabel(this)),
      timeLeft_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      log_(new QPlainTextEdit(this)),
      copy_(new QPushButton(buttonText(texts_.caption(Caption::copyLog)), this)),
      close_(new QPushButton(buttonText(texts_.caption(Caption::closeButton)), this)),
      stopQuestion_(bench.state)
{
    build();
}

void Upgrade::build()
{
    setObjectName(QStringLiteral("Upgrade"));
    setWindowTitle(qtText(texts_.caption(Caption::uploadTitle)));
    resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 22);
    phase_->setObjectName(QStringLiteral("Phase"));
    phase_->setWordWrap(true);
    notice_->setObjectName(QStringLiteral("Notice"));
    notice_->setWordWrap(true);
    notice_->hide();
    timeLeft_->setObjectName(QStringLiteral("TimeLeft"));
    progress_->setObjectName(QStringLiteral("Progress"));
    progress_->setAccessibleName(qtText(texts_.caption(Caption::transferProgress)));
    progress_->setRange(0, 100);
    log_->setObjectName(QStringLiteral("Log"));
    log_->setAccessibleName(qtText(texts_.caption(Caption::uploadLog)));
    log_->setReadOnly(true);
    log_->setTabChangesFocus(true);
    copy_->setObjectName(QStringLiteral("CopyLog"));
    copy_->setEnabled(false);
    close_->setObjectName(QStringLiteral("Close"));

    auto* const buttons = new QDialogButtonBox(this);
    buttons->addButton(copy_, QDialogButtonBox::ActionRole);
    buttons->addButton(close_, QDialogButtonBox::RejectRole);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(phase_);
    layout->addWidget(notice_);
    layout->addWidget(progress_);
    layout->addWidget(timeLeft_);
    layout->addWidget(log_);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &Upgrade::reject);
    connect(copy_, &QPushButton::clicked, this, &Upgrade::copyLog);
}

void Upgrade::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
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
        QDialog::reject();
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
    showNotice(qtText(texts_.caption(Caption::noLoaderReplies)));
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

void Upgrade::reject()
{
    if (!running_)
        QDialog::reject();
    else
        stopQuestion_.ask(this);
}

} // namespace karvo
