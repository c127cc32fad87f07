#include "editors/forms/address_window.h"

#include "editors/dcc_addresses.h"
#include "ui/captions.h"
#include "ui/typed_text.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace karvo
{

namespace
{

constexpr int mostDigits = 6;  // more than an address has, so that a wrong one can be seen as such
constexpr int longestPlan = 7; // lines: the window does not jump

} // namespace

AddressWindow::AddressWindow(const LanguageTables& texts, const char* name, Caption title, QWidget* parent)
    : EditorDialog(texts, parent),
      texts_(texts),
      grid_(new QGridLayout(this)),
      planned_(new QLabel(this)),
      writing_(new QPushButton(buttonText(texts.caption(Caption::writeToVehicle)), this))
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(qtText(texts.caption(title)));
    planned_->setObjectName(QStringLiteral("Plan"));
    planned_->setTextFormat(Qt::PlainText);
    planned_->setWordWrap(true);
    planned_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    planned_->setMinimumHeight(longestPlan * fontMetrics().height());
}

void AddressWindow::add(QWidget& wide)
{
    grid_->addWidget(&wide, grid_->rowCount(), 0, 1, 3);
}

QLabel* AddressWindow::addText(Caption caption)
{
    auto* const label = new QLabel(buttonText(texts_.caption(caption)), this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    add(*label);
    return label;
}

AddressWindow::AddressRow AddressWindow::addAddress(const char* field, const char* box, Caption caption)
{
    const AddressRow made = {new QLineEdit(this), checkBox(box, Caption::writeThisAddress, true)};
    auto* const label = new QLabel(buttonText(texts_.caption(caption)), this);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(made.address);
    made.address->setObjectName(QString::fromLatin1(field));
    made.address->setAccessibleName(label->text());
    made.address->setMaxLength(mostDigits);
    made.address->setValidator(new Windows1252Validator(made.address));
    made.write->setAccessibleName(label->text() + u' ' + made.write->text());
    connect(made.address, &QLineEdit::textChanged, this, [this] { showPlan(); });
    const int row = grid_->rowCount();
    grid_->addWidget(label, row, 0);
    grid_->addWidget(made.address, row, 1);
    grid_->addWidget(made.write, row, 2);
    return made;
}

void AddressWindow::addPlan()
{
    addText(Caption::addressesPlan);
    add(*planned_);
}

// None of them is the default: Enter ends an entry, and never writes to the vehicle.
void AddressWindow::addButtons()
{
    auto* const box = new QDialogButtonBox(this);
    box->addButton(writing_, QDialogButtonBox::ActionRole);
    writing_->setObjectName(QStringLiteral("Command1"));
    auto* const close =
        box->addButton(buttonText(texts_.caption(Caption::closeButton)), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("Command2"));
    for (QPushButton* const button : {writing_, close})
        button->setAutoDefault(false);
    connect(writing_, &QPushButton::clicked, this, [this] { write(); });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    grid_->setRowStretch(grid_->rowCount(), 1);
    add(*box);
}

QCheckBox* AddressWindow::checkBox(const char* name, Caption caption, bool checked)
{
    auto* const box = new QCheckBox(buttonText(texts_.caption(caption)), this);
    box->setObjectName(QString::fromLatin1(name));
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
