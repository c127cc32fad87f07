#include "editors/forms/dcc_adresse.h"

#include "language/language_tables.h"
#include "ui/captions.h"
#include "ui/typed_text.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace karvo
{

namespace
{

constexpr int mostDigits = 6; // more than an address has, so that a wrong one can be seen as such

QString linesOf(const WritePlan& plan)
{
    QStringList lines;
    for (const PlannedWrite& write : plan)
        lines.append(qtText(plannedLine(write)));
    return lines.join(u'\n');
}

} // namespace

DCC_Adresse::DCC_Adresse(const CvTable& table, Prompts& prompts, const LanguageTables& texts, QWidget* parent)
    : QDialog(parent),
      table_(table),
      prompts_(prompts),
      texts_(texts),
      shortForm_(new QRadioButton(buttonText(texts.caption(Caption::shortAddresses)), this)),
      longForm_(new QRadioButton(buttonText(texts.caption(Caption::longAddresses)), this)),
      first_(new QLineEdit(this)),
      second_(new QLineEdit(this)),
      writeFirst_(checkBox("Erste_AD", Caption::writeThisAddress, true)),
      writeSecond_(checkBox("Zweite_AD", Caption::writeThisAddress, true)),
      secondAnswers_(checkBox("Check2", Caption::secondAddressAnswers, addressesOf(table).secondAnswers)),
      planned_(new QLabel(this))
{
    build();
    const bool isLong = addressesOf(table_).form == AddressForm::longForm;
    (isLong ? longForm_ : shortForm_)->setChecked(true);
    showAddresses();
    connect(longForm_, &QRadioButton::toggled, this, &DCC_Adresse::showAddresses);
    for (QLineEdit* const field : {first_, second_})
        connect(field, &QLineEdit::textChanged, this, &DCC_Adresse::showPlan);
    for (QCheckBox* const box : {writeFirst_, writeSecond_, secondAnswers_})
        connect(box, &QCheckBox::toggled, this, &DCC_Adresse::showPlan);
}

void DCC_Adresse::build()
{
    setObjectName(QStringLiteral("DCC_Adresse"));
    setWindowTitle(qtText(texts_.caption(Caption::addressesTitle)));
    shortForm_->setObjectName(QStringLiteral("ShortForm"));
    longForm_->setObjectName(QStringLiteral("LongForm"));
    auto* const grid = new QGridLayout(this);
    grid->addWidget(shortForm_, 0, 0, 1, 3);
    grid->addWidget(longForm_, 1, 0, 1, 3);
    const auto addRow = [&](int row, QLineEdit* field, const char* name, Caption caption, QCheckBox* box) {
        QLabel* const name_ = label(caption);
        field->setObjectName(QString::fromLatin1(name));
        field->setAccessibleName(name_->text());
        field->setMaxLength(mostDigits);
        field->setValidator(new Windows1252Validator(field));
        name_->setBuddy(field);
        box->setAccessibleName(name_->text() + u' ' + box->text());
        grid->addWidget(name_, row, 0);
        grid->addWidget(field, row, 1);
        grid->addWidget(box, row, 2);
    };
    addRow(2, first_, "Erste_Adresse", Caption::firstAddressField, writeFirst_);
    addRow(3, second_, "Zweite_Adresse", Caption::secondAddressField, writeSecond_);
    grid->addWidget(secondAnswers_, 4, 0, 1, 3);
    grid->addWidget(label(Caption::addressesPlan), 5, 0, 1, 3);
    planned_->setObjectName(QStringLiteral("Plan"));
    planned_->setTextFormat(Qt::PlainText);
    planned_->setWordWrap(true);
    planned_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    planned_->setMinimumHeight(7 * fontMetrics().height()); // the longest plan: the window does not jump
    grid->addWidget(planned_, 6, 0, 1, 3);
    QLabel* const note = label(Caption::configurationNote);
    note->setWordWrap(true);
    grid->addWidget(note, 7, 0, 1, 3);
    grid->setRowStretch(8, 1);
    grid->addWidget(buttons(), 9, 0, 1, 3);
}

QLabel* DCC_Adresse::label(Caption caption)
{
    auto* const made = new QLabel(buttonText(texts_.caption(caption)), this);
    made->setTextFormat(Qt::PlainText);
    return made;
}

QCheckBox* DCC_Adresse::checkBox(const char* name, Caption caption, bool checked)
{
    auto* const box = new QCheckBox(buttonText(texts_.caption(caption)), this);
    box->setObjectName(QString::fromLatin1(name));
    box->setChecked(checked);
    return box;
}

QWidget* DCC_Adresse::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    auto* const writing =
        box->addButton(buttonText(texts_.caption(Caption::writeToVehicle)), QDialogButtonBox::ActionRole);
    writing->setObjectName(QStringLiteral("Command1"));
    writing->setDefault(true);
    auto* const close =
        box->addButton(buttonText(texts_.caption(Caption::closeButton)), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("Command2"));
    connect(writing, &QPushButton::clicked, this, &DCC_Adresse::write);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
}

// Of the form that is chosen: the CVs of both forms stand in the table.
void DCC_Adresse::showAddresses()
{
    const AddressForm form = typed().form;
    first_->setText(qtText(firstAddressOf(table_, form)));
    second_->setText(qtText(secondAddressOf(table_, form)));
    showPlan();
}

void DCC_Adresse::showPlan()
{
    const auto planned = planOfAddresses(typed(), table_);
    const auto* const plan = std::get_if<WritePlan>(&planned);
    planned_->setText(plan != nullptr ? linesOf(*plan) : qtText(texts_.message(std::get<Message>(planned))));
}

TypedAddresses DCC_Adresse::typed() const
{
    return {longForm_->isChecked() ? AddressForm::longForm : AddressForm::shortForm,
            typedText(first_->text()),
            typedText(second_->text()),
            writeFirst_->isChecked(),
            writeSecond_->isChecked(),
            secondAnswers_->isChecked()};
}

void DCC_Adresse::write()
{
    auto planned = planOfAddresses(typed(), table_);
    if (const auto* const wrong = std::get_if<Message>(&planned)) {
        prompts_.message(texts_.message(*wrong), PromptIcon::warning);
        return;
    }
    plan_ = std::move(std::get<WritePlan>(planned));
    accept();
}

} // namespace karvo
