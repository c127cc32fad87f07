#include "shell/stale_notice.h"

#include "ui/captions.h"
#include "ui/named.h"

#include <QHBoxLayout>

namespace karvo
{

StaleNotice::StaleNotice(QWidget* parent)
    : QFrame(parent), text_(textLabel("StaleText", this)), read_(named<QPushButton>("ReadAnew", this))
{
    setObjectName(QStringLiteral("StaleNotice"));
    setFrameShape(QFrame::StyledPanel);
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
