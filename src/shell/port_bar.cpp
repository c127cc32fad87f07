#include "shell/port_bar.h"

#include "cvdata/dcc_address.h"
#include "cvdata/decoder_profile.h"
#include "link/forms/port_list.h"
#include "ui/captions.h"
#include "ui/flow_layout.h"
#include "ui/named.h"
#include "ui/typed_text.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace karvo
{

namespace
{

constexpr int gapBetweenGroups = 16; // pixels

// "KV07  Firmware = 6  Sublevel = 2  ATmega328".
Text identificationText(const ProgramState& state)
{
    const CvSet& set = state.set;
    if (set.isEmpty())
        return state.texts.caption(Caption::noDecoder);
    const Text type = typeText(set.profile, state.texts) + u"  ";
    if (set.isOffline())
        return type + state.texts.caption(Caption::offlineList);
    return type + state.texts.caption(Caption::firmware) + u" = " +
           textFromNumber(set.profile.firmwareVersion) + u"  " + state.texts.caption(Caption::subLevel) +
           u" = " + textFromNumber(set.profile.subLevel) + u"  " + Text(processorName(set.profile.processor));
}

// "Address: 3 (short)".
Text addressText(const ProgramState& state)
{
    const Text label = state.texts.caption(Caption::address);
    const Text address = firstAddress(state.set.table);
    if (address.empty())
        return label + u" -";
    const auto form = usesLongAddresses(state.set.table) ? Caption::longAddress : Caption::shortAddress;
    return label + u' ' + address + u" (" + state.texts.caption(form) + u')';
}

void joinWithLabel(QLabel& label, QLabel& value)
{
    value.setAccessibleName(label.text() + u' ' + value.text());
}

} // namespace

PortBar::PortBar(const LanguageTables& texts, ListPortDevices listDevices, QWidget* parent)
    : QWidget(parent),
      portLabel_(named<QLabel>("COM_Label", this)),
      texts_(texts),
      ports_(new PortList(texts, std::move(listDevices), this)),
      note_(named<QLabel>("COM_Note", this)),
      start_(named<QPushButton>("Start", this)),
      identification_(named<QLabel>("Programm_Kennung", this)),
      address_(named<QLabel>("Adresse", this)),
      firstLabel_(named<QLabel>("DCC1_Label", this)),
      first_(named<QLabel>("DCC1", this)),
      secondLabel_(named<QLabel>("DCC2_Label", this)),
      second_(named<QLabel>("DCC2", this)),
      servoAddress_(named<QPushButton>("Servo_Addr", this))
{
    ports_->setObjectName(QStringLiteral("COM"));
    portLabel_->setBuddy(ports_);
    auto* const layout = new FlowLayout(this);
    layout->setSpacing(gapBetweenGroups);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(portGroup());
    layout->addWidget(identification_);
    layout->addWidget(addressGroup());
    for (QLabel* value : {identification_, address_, first_, second_})
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(ports_, &PortList::portChosen, this, &PortBar::portChosen);
    connect(ports_, &PortList::portChosen, this, &PortBar::updateNote);
    // Who plugs the device in sees that it is found.
    constexpr int lookEvery = 2000;
    noteTimer_.setInterval(lookEvery);
    connect(&noteTimer_, &QTimer::timeout, this, &PortBar::updateNote);
    connect(start_, &QPushButton::clicked, this, &PortBar::readWanted);
    connect(servoAddress_, &QPushButton::clicked, this, &PortBar::servoAddressesWanted);
}

QWidget* PortBar::portGroup()
{
    auto* const group = new QWidget(this);
    auto* const layout = new QHBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(portLabel_);
    layout->addWidget(ports_);
    layout->addWidget(start_);
    layout->addWidget(note_);
    return group;
}

QWidget* PortBar::addressGroup()
{
    auto* const group = new QWidget(this);
    auto* const layout = new QHBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(address_);
    layout->addSpacing(gapBetweenGroups);
    layout->addWidget(firstLabel_);
    layout->addWidget(first_);
    layout->addSpacing(gapBetweenGroups);
    layout->addWidget(secondLabel_);
    layout->addWidget(second_);
    layout->addSpacing(gapBetweenGroups);
    layout->addWidget(servoAddress_);
    return group;
}

void PortBar::applyCaptions(const LanguageTables& texts)
{
    portLabel_->setText(buttonText(texts.caption(Caption::port)));
    ports_->setAccessibleName(qtText(texts.caption(Caption::port)));
    start_->setText(buttonText(texts.caption(Caption::readAll)));
    firstLabel_->setText(qtText(texts.caption(Caption::firstAddress)));
    secondLabel_->setText(qtText(texts.caption(Caption::secondAddress)));
    servoAddress_->setText(buttonText(texts.caption(Caption::servoAddress)));
    updateNote();
}

void PortBar::showPort(int number)
{
    ports_->showPort(number);
    updateNote();
}

void PortBar::updateNote()
{
    const bool absent = ports_->isAbsent();
    note_->setText(absent
                       ? qtText(texts_.caption(Caption::portAbsentNote, {typedText(ports_->currentText())}))
                       : QString());
    note_->setVisible(absent);
    ports_->setAccessibleDescription(note_->text());
    if (absent)
        noteTimer_.start();
    else
        noteTimer_.stop();
}

bool PortBar::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        updateNote();
    return QWidget::event(event);
}

void PortBar::showDecoder(const ProgramState& state)
{
    identification_->setText(qtText(identificationText(state)));
    address_->setText(qtText(addressText(state)));
    first_->setText(qtText(firstAddress(state.set.table)));
    second_->setText(qtText(secondAddress(state.set.table)));
    joinWithLabel(*firstLabel_, *first_);
    joinWithLabel(*secondLabel_, *second_);
}

void PortBar::setLineBusy(bool busy)
{
    ports_->setEnabled(!busy);
    start_->setEnabled(!busy);
}

void PortBar::setServoAddresses(bool available, const std::optional<Text>& reason)
{
    const QString words = reason ? qtText(*reason) : QString();
    servoAddress_->setEnabled(available && !reason);
    servoAddress_->setToolTip(words);
    servoAddress_->setStatusTip(words);
}

void PortBar::focusStart()
{
    start_->setFocus();
}

} // namespace karvo
