#include "editors/forms/sheet_field_row.h"

#include "ui/captions.h"
#include "ui/named.h"
#include "ui/wrapping_check_box.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>

namespace karvo
{

namespace
{

using Kind = SheetViewField::Kind;

constexpr int nameColumn = 0;
constexpr int cvColumn = 1;
constexpr int factoryColumn = 3;
constexpr int markColumn = 4;
constexpr int pages = 10;             // of a slider
constexpr int meaningCharacters = 15; // "= 1 min 30 s"
constexpr int spinCharacters = 10;    // with its buttons: the sliders behind it begin at the same place

const QString dash = QStringLiteral("\u2013");

} // namespace

SheetFieldRow::SheetFieldRow(const SheetViewField& field, const SheetRowWords& words, QGridLayout& grid,
                             QWidget* parent)
    : QObject(parent), field_(field), words_(words), parent_(parent), mark_(new QLabel(parent))
{
    const int row = grid.rowCount();
    const bool isOneLine = field.switches.size() < 2;
    const auto add = [&](QWidget* widget, int column) {
        grid.addWidget(widget, row, column, isOneLine ? Qt::AlignVCenter : Qt::AlignTop);
    };
    const bool isNamedByItsSwitch = field.switches.size() == 1 && field.switches.front().word == field.name;
    const QString name = isNamedByItsSwitch ? QString() : qtText(field.name);
    auto* const label = textLabel("", parent, name);
    label->setAlignment(Qt::AlignLeft | (isOneLine ? Qt::AlignVCenter : Qt::AlignTop));
    grid.addWidget(label, row, nameColumn);
    add(new QLabel(cvs(), parent), cvColumn);
    grid.addWidget(control(), row, controlColumn);
    add(new QLabel(factory(), parent), factoryColumn);
    mark_->setObjectName(QString::fromStdString(objectNameOf(field)) + QStringLiteral("_mark"));
    mark_->setToolTip(qtText(words_.texts.caption(Caption::sheetDiffersHelp)));
    mark_->setMinimumWidth(
        mark_->fontMetrics().horizontalAdvance(qtText(words_.texts.caption(Caption::sheetDiffers))));
    add(mark_, markColumn);
}

QString SheetFieldRow::cvs() const
{
    if (field_.cvs.empty())
        return {};
    QString text = QStringLiteral("CV%1").arg(field_.cvs.front());
    if (field_.cvs.size() > 1)
        text += QStringLiteral("-%1").arg(field_.cvs.back());
    return text;
}

QString SheetFieldRow::factory() const
{
    if (!field_.isEdited() || !field_.factory)
        return {};
    return filledCaption(words_.texts, Caption::sheetFactoryValue,
                         {field_.switches.size() == 1 ? yesOrNo(field_.switches.front())
                                                      : textFromNumber(shownPart(*field_.factory))});
}

// Of a set of switches, what those that are shown add up to.
int SheetFieldRow::shownPart(int value) const
{
    if (field_.kind != Kind::switches)
        return value;
    int part = 0;
    for (const SheetSwitch& one : field_.switches)
        part += value & one.weight;
    return part;
}

Text SheetFieldRow::yesOrNo(const SheetSwitch& one) const
{
    const bool isOn = (field_.factory.value_or(0) & one.weight) != 0;
    return words_.texts.caption(isOn ? Caption::settingOn : Caption::settingOff);
}

QString SheetFieldRow::plainName() const
{
    return qtText(field_.name) + (field_.cvs.empty() ? QString() : QStringLiteral(" (%1)").arg(cvs()));
}

QString SheetFieldRow::help() const
{
    QStringList parts{plainName()};
    for (const Text* const text : {&field_.explanation, &field_.values, &field_.advice}) {
        if (!text->empty())
            parts.append(qtText(*text));
    }
    if (field_.isEdited() && field_.kind != Kind::switches && field_.kind != Kind::choice) {
        parts.front() += QStringLiteral(": ") +
                         filledCaption(words_.texts, Caption::sheetLimits,
                                       {textFromNumber(field_.lower), textFromNumber(field_.upper)});
    }
    return parts.join(u'\n');
}

void SheetFieldRow::nameControl(QWidget& control, const char* suffix)
{
    control.setObjectName(QString::fromStdString(objectNameOf(field_)) + QLatin1String(suffix));
    control.setAccessibleName(plainName());
    control.setAccessibleDescription(qtText(field_.explanation));
    control.installEventFilter(this);
}

QWidget* SheetFieldRow::control()
{
    switch (field_.kind) {
    case Kind::switches:
        return switches();
    case Kind::choice:
        return choice();
    case Kind::number:
    case Kind::time:
    case Kind::longNumber:
        return number();
    case Kind::address:
        return address();
    case Kind::shown:
    case Kind::measured:
    case Kind::set:
        break;
    }
    return text();
}

QWidget* SheetFieldRow::switches()
{
    auto* const column = new QWidget(parent_);
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(layout->spacing() / 2);
    for (const SheetSwitch& one : field_.switches) {
        auto* const box = captioned<WrappingCheckBox>("", column, buttonText(one.word));
        box->setObjectName(QString::fromStdString(objectNameOf(one)));
        box->setAccessibleDescription(plainName());
        QString tip = filledCaption(words_.texts, Caption::sheetBit,
                                    {textFromNumber(one.cv), textFromNumber(one.weight)});
        if (field_.factory)
            tip += QStringLiteral(", ") +
                   filledCaption(words_.texts, Caption::sheetFactoryValue, {yesOrNo(one)});
        box->setToolTip(tip);
        box->installEventFilter(this);
        connect(box, &QCheckBox::toggled, this, [this, &one](bool on) { emit switchChosen(one, on); });
        layout->addWidget(box);
        boxes_.push_back(box);
    }
    return column;
}

QWidget* SheetFieldRow::choice()
{
    choice_ = new QComboBox(parent_);
    nameControl(*choice_);
    choice_->setPlaceholderText(dash);
    choice_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice_->setMinimumContentsLength(16);
    for (const NamedValue& one : field_.meaning.choices)
        choice_->addItem(QStringLiteral("%1: %2").arg(one.value).arg(qtText(one.word)), one.value);
    connect(choice_, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            emit valueChosen(field_, choice_->itemData(index).toInt());
    });
    return choice_;
}

QWidget* SheetFieldRow::number()
{
    auto* const line = new QWidget(parent_);
    auto* const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    spin_ = new QSpinBox(line);
    nameControl(*spin_);
    spin_->setRange(field_.lower, field_.upper);
    spin_->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    connect(spin_, &QSpinBox::valueChanged, this, [this](int value) { emit valueChosen(field_, value); });
    spin_->setMinimumWidth(spin_->fontMetrics().averageCharWidth() * spinCharacters);
    layout->addWidget(spin_);
    if (field_.kind != Kind::longNumber) {
        slider_ = new QSlider(Qt::Horizontal, line);
        nameControl(*slider_, "_slider");
        slider_->setRange(field_.lower, field_.upper);
        slider_->setPageStep(std::max(1, (field_.upper - field_.lower) / pages));
        slider_->setMinimumWidth(slider_->fontMetrics().averageCharWidth() * pages);
        connect(slider_, &QSlider::valueChanged, this,
                [this](int value) { emit valueChosen(field_, value); });
        layout->addWidget(slider_, 1);
    }
    if (slider_ != nullptr) {
        meaning_ = textLabel("", line);
        meaning_->setObjectName(QString::fromStdString(objectNameOf(field_)) + QStringLiteral("_meaning"));
        meaning_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        meaning_->setMinimumWidth(meaning_->fontMetrics().averageCharWidth() * meaningCharacters);
        layout->addWidget(meaning_);
    } else {
        layout->addStretch(1);
    }
    return line;
}

QWidget* SheetFieldRow::address()
{
    auto* const line = new QWidget(parent_);
    auto* const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(field_.shownText.empty() ? dash : qtText(field_.shownText), line));
    auto* const change =
        captioned<QPushButton>("", line, buttonText(words_.texts.caption(Caption::sheetAddresses)));
    nameControl(*change);
    connect(change, &QPushButton::clicked, this, &SheetFieldRow::addressesWanted);
    layout->addWidget(change);
    layout->addStretch(1);
    return line;
}

QWidget* SheetFieldRow::text()
{
    QString shown = field_.shownText.empty() ? dash : qtText(field_.shownText);
    if (field_.kind == Kind::set)
        shown = becoming();
    auto* const label = textLabel("", parent_, shown);
    label->setObjectName(QString::fromStdString(objectNameOf(field_)));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

// "12 s \u2192 off", or "off" where it is that already.
QString SheetFieldRow::becoming() const
{
    const auto before = words_.list.value(field_.cvs.front());
    const QString after = qtText(field_.shownText);
    if (!before || before == field_.setTo)
        return after;
    return qtText(meaningOf(*before, field_.meaning, words_.decimalComma)) + QStringLiteral(" \u2192 ") +
           after;
}

void SheetFieldRow::showValues(const SheetValues& values)
{
    const auto value = values.value(field_);
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        const QSignalBlocker quiet(boxes_[i]);
        boxes_[i]->setChecked(values.bit(field_.switches[i].cv, field_.switches[i].weight));
    }
    if (choice_ != nullptr)
        showChoice(value);
    if (spin_ != nullptr)
        showNumber(value);
    const bool canDiffer = field_.isEdited() || field_.kind == Kind::set;
    mark_->setText(canDiffer && values.differs(field_) ? qtText(words_.texts.caption(Caption::sheetDiffers))
                                                       : QString());
}

void SheetFieldRow::showChoice(std::optional<int> value)
{
    const QSignalBlocker quiet(choice_);
    if (value && choice_->findData(*value) < 0)
        choice_->addItem(QString::number(*value), *value); // from elsewhere, and no text explains it
    choice_->setCurrentIndex(value ? choice_->findData(*value) : -1);
    choice_->setToolTip(choice_->currentText());
}

// Without a value the field says so in place of its lowest one; a list from elsewhere may hold one beyond
// the limits.
void SheetFieldRow::showNumber(std::optional<int> value)
{
    const QSignalBlocker quiet(spin_);
    const int shown = value.value_or(field_.lower - 1);
    spin_->setRange(std::min(field_.lower, shown), std::max(field_.upper, shown));
    spin_->setSpecialValueText(value ? QString() : dash);
    spin_->setValue(shown);
    if (slider_ != nullptr) {
        const QSignalBlocker quietToo(slider_);
        slider_->setValue(shown);
    }
    if (meaning_ == nullptr)
        return;
    const Text meaning = value ? meaningOf(*value, field_.meaning, words_.decimalComma) : Text();
    const bool saysMore = value && meaning != textFromNumber(*value);
    meaning_->setText(saysMore ? QStringLiteral("= ") + qtText(meaning) : QString());
}

bool SheetFieldRow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        emit entered();
    return QObject::eventFilter(watched, event);
}

} // namespace karvo
