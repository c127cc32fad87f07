#include "cvdata/forms/bit_boxes.h"

#include "ui/captions.h"
#include "ui/named.h"
#include "ui/wrapping_check_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <string>

namespace karvo
{

namespace
{

// Weights stand below each other like a column of numbers.
Text alignedWeight(std::size_t bit)
{
    constexpr char16_t figureSpace = u'\u2007';
    const Text weight = textFromNumber(bitWeight(bit));
    return Text(3 - weight.size(), figureSpace) + weight + u"  ";
}

QString boxText(const CvDetails& details, std::size_t bit, const LanguageTables& texts)
{
    if (!details.bits[bit].empty())
        return buttonText(alignedWeight(bit) + details.bits[bit]);
    return buttonText(alignedWeight(bit) +
                      texts.caption(Caption::unnamedBit, {textFromNumber(static_cast<long long>(bit))}));
}

} // namespace

BitBoxes::BitBoxes(QWidget* parent)
    : QGroupBox(parent),
      sumLabel_(named<QLabel>("Errechneter_Wert_Label", this)),
      sum_(named<QLabel>("Errechneter_Wert", this))
{
    setObjectName(QStringLiteral("Bits"));
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(2);
    for (std::size_t i = boxes_.size(); i-- > 0;) {
        boxes_[i] = named<WrappingCheckBox>(("Check" + std::to_string(bitWeight(i))).c_str(), this);
        connect(boxes_[i], &QCheckBox::toggled, this, &BitBoxes::showSum);
        connect(boxes_[i], &QCheckBox::clicked, this,
                [this, i](bool on) { emit bitChosen(bitWeight(i), on); });
        layout->addWidget(boxes_[i]);
    }
    QFont bold = sum_->font();
    bold.setBold(true);
    sum_->setFont(bold);
    sum_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const sumRow = new QHBoxLayout;
    sumRow->addWidget(sumLabel_);
    sumRow->addWidget(sum_, 1);
    layout->addLayout(sumRow);
    showSum();
}

void BitBoxes::applyCaptions(const LanguageTables& texts)
{
    setTitle(buttonText(texts.caption(Caption::bits)));
    sumLabel_->setText(buttonText(texts.caption(Caption::computedValue)));
    ofNumber_ = qtText(texts.caption(Caption::bitsOfNumber));
    withoutMeaning_ = qtText(texts.caption(Caption::bitWithoutMeaning));
    withoutMeaningSet_ = qtText(texts.caption(Caption::bitWithoutMeaningSet));
    showSum();
}

void BitBoxes::showCv(const CvDetails& details, const LanguageTables& texts)
{
    details_ = details;
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        boxes_[i]->setText(boxText(details, i, texts));
        boxes_[i]->setEnabled(details.isLive(i));
        boxes_[i]->updateGeometry();
    }
    showValue(numberFromText(details.value).value_or(0));
}

void BitBoxes::showValue(int value)
{
    const auto ticked = bitsOfValue(value);
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        const QSignalBlocker quiet(boxes_[i]);
        boxes_[i]->setChecked(ticked[i]);
    }
    showSum();
    showReasons();
}

void BitBoxes::showReasons()
{
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        QString reason;
        if (details_.number != 0 && !details_.isSetOfSwitches)
            reason = ofNumber_;
        else if (details_.number != 0 && !details_.isLive(i))
            reason = boxes_[i]->isChecked() ? withoutMeaningSet_ : withoutMeaning_;
        boxes_[i]->setToolTip(reason);
        boxes_[i]->setStatusTip(reason);
        boxes_[i]->setAccessibleDescription(reason);
    }
}

int BitBoxes::value() const
{
    std::array<bool, 8> ticked{};
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        ticked[i] = boxes_[i]->isChecked();
    return valueOfBits(ticked);
}

void BitBoxes::showSum()
{
    sum_->setText(QString::number(value()));
    sum_->setAccessibleName(sumLabel_->text() + u' ' + sum_->text());
}

} // namespace karvo
