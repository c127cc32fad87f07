#include "editors/forms/address_window.h"

#include "editors/dcc_addresses.h"
#include "ui/captions.h"
#include "ui/form_rows.h"
#include "ui/named.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr int mostDigits = 6;  // more than an address has, so that a wrong one can be seen as such
constexpr int longestPlan = 7; // lines: the window does not jump

} // namespace

AddressWindow::AddressWindow(const LanguageTables& texts, const char* name, Caption title, QWidget* parent)
    : EditorDialog(texts, name, title, parent),
      rows_(new FormRows),
      planned_(textLabel("Plan", this)),
      writing_(addWriting("Command1", Caption::writeToVehicle))
{
    column().addLayout(rows_);
    column().addStretch(1);
    planned_->setMinimumHeight(longestPlan * fontMetrics().height());
    addButton("Command2", Caption::closeButton, ButtonRow::RejectRole);
    connect(writing_, &QPushButton::clicked, this, [this] { write(); });
}

void AddressWindow::add(QWidget& wide)
{
    rows_->addWide(wide);
}

void AddressWindow::addText(Caption caption)
{
    add(*textLabel("", this, shown(caption)));
}

AddressWindow::AddressRow AddressWindow::addAddress(const char* field, const char* box, Caption caption)
{
    const AddressRow made = {entryField(field, this, mostDigits),
                             checkBox(box, Caption::writeThisAddress, true)};
    made.write->setAccessibleName(shown(caption) + u' ' + shown(Caption::writeThisAddress));
    connect(made.address, &QLineEdit::textChanged, this, [this] { showPlan(); });
    rows_->add(*made.address, shown(caption), *made.write);
    return made;
}

void AddressWindow::addPlan()
{
    addText(Caption::addressesPlan);
    add(*planned_);
}

QCheckBox* AddressWindow::checkBox(const char* name, Caption caption, bool checked)
{
    auto* const box = captioned<QCheckBox>(name, this, onButton(caption));
    box->setChecked(checked);
    connect(box, &QCheckBox::toggled, this, [this] { showPlan(); });
    return box;
}

void AddressWindow::showLines(const WritePlan& plan)
{
    QStringList lines;
    for (const PlannedWrite& write : plan)
        lines.append(qtText(plannedLine(write)));
    planned_->setText(lines.join(u'\n'));
}

void AddressWindow::showWords(const Text& words)
{
    planned_->setText(qtText(words));
}

void AddressWindow::finish(WritePlan plan)
{
    plan_ = std::move(plan);
    accept();
}

} // namespace karvo
