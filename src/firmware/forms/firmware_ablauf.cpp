#include "firmware/forms/firmware_ablauf.h"

#include "ui/captions.h"
#include "ui/named.h"

#include <QPlainTextEdit>
#include <QProgressBar>
#include <QVBoxLayout>

namespace karvo
{

Firmware_Ablauf::Firmware_Ablauf(Workbench& bench, QWidget* parent)
    : Form(bench.state.texts, "Firmware_Ablauf", Caption::updateTitle, parent),
      bench_(bench),
      header_(textLabel("Header", this)),
      text_(named<QPlainTextEdit>("Text", this, windowTitle())),
      progress_(named<QProgressBar>("Progress", this, shown(Caption::transferProgress))),
      stopQuestion_(bench.state)
{
    setModal(true);
    setUsualSize({fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 16});
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    progress_->setFormat(QStringLiteral("%p%"));
    column().addWidget(header_);
    column().addWidget(text_, 1);
    column().addWidget(progress_);
}

void Firmware_Ablauf::showHeader(const Text& header)
{
    header_->setText(qtText(header));
    bench_.view.showStatus(header); // before this window opens
}

void Firmware_Ablauf::showStart(const Text& text)
{
    text_->setPlainText(qtText(text));
    show();
}

void Firmware_Ablauf::showProgress(std::uint64_t sent, std::uint64_t total)
{
    progress_->setRange(0, static_cast<int>(total));
    progress_->setValue(static_cast<int>(sent));
}

void Firmware_Ablauf::showEnd()
{
    stopQuestion_.withdraw();
    hide();
}

bool Firmware_Ablauf::mayClose()
{
    stopQuestion_.ask(this);
    return false; // the end of the transfer closes it
}

} // namespace karvo
