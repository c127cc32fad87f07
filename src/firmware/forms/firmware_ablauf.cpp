#include "firmware/forms/firmware_ablauf.h"

#include "ui/captions.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QVBoxLayout>

namespace karvo
{

Firmware_Ablauf::Firmware_Ablauf(Workbench& bench, QWidget* parent)
    : QDialog(parent),
      bench_(bench),
      header_(new QLabel(this)),
      text_(new QPlainTextEdit(this)),
      progress_(new QProgressBar(this)),
      stopQuestion_(bench.state)
{
    const LanguageTables& texts = bench.state.texts;
    setObjectName(QStringLiteral("Firmware_Ablauf"));
    setWindowTitle(qtText(texts.caption(Caption::updateTitle)));
    setModal(true);
    resize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 12);
    header_->setObjectName(QStringLiteral("Header"));
    header_->setTextFormat(Qt::PlainText); // it comes from a file
    header_->setWordWrap(true);
    text_->setObjectName(QStringLiteral("Text"));
    text_->setAccessibleName(windowTitle());
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    progress_->setObjectName(QStringLiteral("Progress"));
    progress_->setAccessibleName(qtText(texts.caption(Caption::transferProgress)));
    progress_->setFormat(QStringLiteral("%p%"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(header_);
    layout->addWidget(text_);
    layout->addWidget(progress_);
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

void Firmware_Ablauf::showRecords(std::size_t sent, std::size_t total)
{
    progress_->setRange(0, static_cast<int>(total));
    progress_->setValue(static_cast<int>(sent));
}

void Firmware_Ablauf::showEnd()
{
    stopQuestion_.withdraw();
    hide();
}

void Firmware_Ablauf::reject()
{
    stopQuestion_.ask(this);
}

} // namespace karvo
