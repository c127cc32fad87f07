#include "cvdata/forms/cv_panel.h"

#include "cvdata/forms/bit_boxes.h"
#include "ui/captions.h"
#include "ui/named.h"
#include "ui/typed_text.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr int fieldWidth = 6; // digits, with some air

// Another window or a menu comes and goes, and the field is as it was.
bool leavesField(Qt::FocusReason reason)
{
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

void setReason(QWidget& widget, const QString& reason)
{
    widget.setToolTip(reason);
    widget.setStatusTip(reason);
    widget.setAccessibleDescription(reason);
}

void returnTo(QLineEdit& field, const Text& typed)
{
    field.setText(qtText(typed));
    field.setFocus();
    field.selectAll();
}

void showText(QLabel& label, const Text& text)
{
    label.setText(qtText(text));
    label.setFocusPolicy(text.empty() ? Qt::NoFocus : Qt::StrongFocus); // an empty text is no stop on the way
}

} // namespace

CvPanel::CvPanel(QWidget* parent)
    : QWidget(parent),
      group_(named<QGroupBox>("CurrentCv", this)),
      numberLabel_(named<QLabel>("CV_Nummer_Label", this)),
      number_(addField("CV_Nummer")),
      valueLabel_(named<QLabel>("CV_Wert_Label", this)),
      value_(addField("CV_Wert")),
      takeValue_(named<QPushButton>("Enter_Taste", this)),
      factoryLabel_(named<QLabel>("CV_Fabrik_Label", this)),
      factory_(addField("CV_Fabrik")),
      limitsLabel_(named<QLabel>("Grenzwert_Label", this)),
      limits_(named<QLabel>("Grenzwert", this)),
      name_(addText("Bezeichnung")),
      takeBack_(named<QPushButton>("Zuruecknehmen", this)),
      takeAllBack_(named<QPushButton>("Alle_zuruecknehmen", this)),
      bits_(new BitBoxes(this)),
      explanation_(addText("Zusatz_Text")),
      values_(addText("var_Text")),
      advice_(addText("Text1")),
      expert_(addText("Experte")),
      writeSingle_(named<QPushButton>("Einzelne_speichern", this)),
      writeChanged_(named<QPushButton>("Alle_speichern", this)),
      notice_(named<QCheckBox>("Hinweis_nach_Schreiben", this))
{
    for (QLineEdit* field : {number_, value_}) {
        field->setValidator(
            new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,3}")), field));
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this, [this, field] { settleOtherField(field); });
    }
    factory_->setReadOnly(true);
    QFont bold = name_->font();
    bold.setBold(true);
    name_->setFont(bold);

    auto* const inGroup = new QVBoxLayout(group_);
    inGroup->addLayout(fieldsLayout());
    inGroup->addLayout(takeBackLayout());
    inGroup->addWidget(name_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(group_);
    layout->addWidget(bits_);
    layout->addWidget(explanation_);
    layout->addWidget(values_);
    layout->addWidget(advice_);
    layout->addWidget(expert_);
    layout->addStretch(1); // what writes keeps its place, however long the texts are
    layout->addWidget(writeSingle_);
    layout->addWidget(writeChanged_);
    layout->addWidget(notice_);
    connectControls();
    setAvailable({});
}

void CvPanel::connectControls()
{
    connect(number_, &QLineEdit::returnPressed, this, &CvPanel::settlingWanted);
    connect(value_, &QLineEdit::returnPressed, this, &CvPanel::valueEntered);
    connect(value_, &QLineEdit::textChanged, this, &CvPanel::followValue);
    connect(takeValue_, &QPushButton::clicked, this, &CvPanel::valueEntered);
    connect(bits_, &BitBoxes::bitChosen, this, &CvPanel::bitChosen);
    connect(takeBack_, &QPushButton::clicked, this, &CvPanel::takeBackWanted);
    connect(takeAllBack_, &QPushButton::clicked, this, &CvPanel::takeBackAllWanted);
    connect(writeSingle_, &QPushButton::clicked, this, &CvPanel::writeSingleWanted);
    connect(writeChanged_, &QPushButton::clicked, this, &CvPanel::writeChangedWanted);
    connect(notice_, &QCheckBox::clicked, this, &CvPanel::noticeChosen);
}

// Escape is the field's own only while it has something to give up or is open for typing: else it ends what
// is under way.
bool CvPanel::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const field = qobject_cast<QLineEdit*>(watched);
    const auto isEscape = [&] { return static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape; };
    if (event->type() == QEvent::FocusOut && isPending(field) &&
        leavesField(static_cast<QFocusEvent*>(event)->reason())) {
        emit entryLeft();
    } else if (event->type() == QEvent::ShortcutOverride && isEscape() &&
               (isPending(field) || !value_->isReadOnly())) {
        event->accept();
        return true;
    } else if (event->type() == QEvent::KeyPress && isEscape()) {
        cancelEntry();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

QGridLayout* CvPanel::fieldsLayout()
{
    auto* const grid = new QGridLayout;
    grid->addWidget(numberLabel_, 0, 0);
    grid->addWidget(number_, 0, 1);
    grid->addWidget(valueLabel_, 0, 2);
    grid->addWidget(value_, 0, 3);
    grid->addWidget(takeValue_, 0, 4);
    grid->addWidget(factoryLabel_, 1, 0);
    grid->addWidget(factory_, 1, 1);
    grid->addWidget(limitsLabel_, 1, 2);
    grid->addWidget(limits_, 1, 3, 1, 2);
    grid->setColumnStretch(4, 1);
    numberLabel_->setBuddy(number_);
    valueLabel_->setBuddy(value_);
    factoryLabel_->setBuddy(factory_);
    limitsLabel_->setBuddy(limits_);
    return grid;
}

QHBoxLayout* CvPanel::takeBackLayout()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(takeBack_);
    row->addWidget(takeAllBack_);
    row->addStretch(1);
    return row;
}

void CvPanel::applyCaptions(const LanguageTables& texts)
{
    const auto name = [&](QLabel* label, QWidget* field, Caption caption) {
        label->setText(buttonText(texts.caption(caption)));
        field->setAccessibleName(qtText(texts.caption(caption)));
    };
    group_->setTitle(buttonText(texts.caption(Caption::chosenCv)));
    name(numberLabel_, number_, Caption::cvNumber);
    name(valueLabel_, value_, Caption::cvValue);
    name(factoryLabel_, factory_, Caption::cvFactoryValue);
    name(limitsLabel_, limits_, Caption::cvLimits);
    takeValue_->setText(buttonText(texts.caption(Caption::takeValue)));
    writeSingle_->setText(buttonText(texts.caption(Caption::writeSingle)));
    writeChanged_->setText(buttonText(texts.caption(Caption::writeChanged)));
    takeBack_->setText(buttonText(texts.caption(Caption::takeBack)));
    takeAllBack_->setText(buttonText(texts.caption(Caption::takeAllBack)));
    notice_->setText(buttonText(texts.caption(Caption::noticeOption)));
    bits_->applyCaptions(texts);
}

void CvPanel::showCv(const CvDetails& details, const Text& expert, const LanguageTables& texts)
{
    shownNumber_ = details.number == 0 ? QString() : QString::number(details.number);
    shownValue_ = qtText(details.value);
    number_->setText(shownNumber_);
    const bool chosen = value_->hasSelectedText();
    value_->setText(shownValue_);
    if (chosen)
        value_->selectAll(); // the next key types over it still
    factory_->setText(qtText(details.factoryValue));
    const bool limited = !details.lowerLimit.empty() && !details.upperLimit.empty();
    limits_->setText(limited ? qtText(details.lowerLimit + u' ' + texts.caption(Caption::limitsTo) + u' ' +
                                      details.upperLimit)
                             : QString());
    limits_->setAccessibleName(limitsLabel_->text() + u' ' + limits_->text());
    showText(*name_, details.name);
    showText(*explanation_, details.explanation);
    showText(*values_, details.values);
    showText(*advice_, details.advice);
    showText(*expert_, expert.empty() ? Text() : texts.caption(Caption::expertLabel) + u": " + expert);
    bits_->showCv(details, texts);
}

void CvPanel::setAvailable(const PanelAvailability& available)
{
    number_->setReadOnly(!available.choosing);
    value_->setReadOnly(!available.changing);
    takeValue_->setEnabled(available.changing);
    bits_->setEnabled(available.changing);
    takeBack_->setEnabled(available.takingBack);
    takeAllBack_->setEnabled(available.takingAllBack);
    writeSingle_->setEnabled(available.writingOne);
    writeChanged_->setEnabled(available.writingChanged);
    for (QPushButton* button : {writeSingle_, writeChanged_})
        setReason(*button, available.whyNoWriting);
}

void CvPanel::setNotice(bool wanted)
{
    notice_->setChecked(wanted);
}

void CvPanel::beginEntry(const QString& digit)
{
    if (value_->isReadOnly())
        return;
    value_->setFocus();
    if (digit.isEmpty())
        value_->selectAll();
    else
        value_->setText(digit);
}

bool CvPanel::isPending(const QLineEdit* field) const
{
    return field->text() != (field == number_ ? shownNumber_ : shownValue_);
}

TypedEntry CvPanel::pendingEntry() const
{
    const auto typed = [this](const QLineEdit* field) {
        return isPending(field) ? std::optional(typedText(field->text())) : std::nullopt;
    };
    return {typed(number_), typed(value_)};
}

void CvPanel::returnToNumber(const Text& typed)
{
    returnTo(*number_, typed);
}

void CvPanel::returnToValue(const Text& typed)
{
    returnTo(*value_, typed);
}

// A value belongs to the CV whose number was typed before it, and not to the one whose number comes after it:
// only one of the fields is ever under way.
void CvPanel::settleOtherField(QLineEdit* typed)
{
    const QLineEdit* const other = typed == number_ ? value_ : number_;
    if (!isPending(other))
        return;
    const QString text = typed->text();
    typed->setText(typed == number_ ? shownNumber_ : shownValue_);
    emit settlingWanted();
    if (!isPending(other))
        typed->setText(text);
}

// Not what is no value of a CV.
void CvPanel::followValue()
{
    const auto value = numberFromText(typedText(value_->text()));
    if (isCvValue(value))
        bits_->showValue(*value);
}

void CvPanel::cancelEntry()
{
    number_->setText(shownNumber_);
    value_->setText(shownValue_);
    emit entryCancelled();
}

QLineEdit* CvPanel::addField(const char* name)
{
    auto* const field = named<QLineEdit>(name, this);
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(u'0') * fieldWidth + 16);
    return field;
}

// A text of the description, on as many lines as it takes; it can be copied.
QLabel* CvPanel::addText(const char* name)
{
    QLabel* const label = textLabel(name, this);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setFocusPolicy(Qt::NoFocus);
    return label;
}

} // namespace karvo
