#include "shell/stale_notice.h"

#include "ui/captions.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace karvo
{

StaleNotice::StaleNotice(QWidget* parent)
    : QFrame(parent), text_(new QLabel(this)), read_(new QPushButton(this))
{
    setObjectName(QStringLiteral("StaleNotice"));
    setFrameShape(QFrame::StyledPanel);
    text_->setObjectName(QStringLiteral("StaleText"));
    text_->setWordWrap(true);
    read_->setObjectName(QStringLiteral("ReadAnew"));
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(text_, 1);
    layout->addWidget(read_);
    connect(read_, &QPushButton::clicked, this, &StaleNotice::readWanted);
    hide();
}

void StaleNotice::applyCaptions(const LanguageTables& texts)
{
    text_->setText(qtText(texts.caption(Caption::staleList)));
    read_->setText(buttonText(texts.caption(Caption::readAnew)));
    read_->setAccessibleDescription(text_->text());
}

void StaleNotice::setLineBusy(bool busy)
{
    read_->setEnabled(!busy);
}

} // namespace karvo
