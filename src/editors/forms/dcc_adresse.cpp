#include "editors/forms/dcc_adresse.h"

#include "ui/captions.h"
#include "ui/named.h"
#include "ui/typed_text.h"

#include <QCheckBox>
#include <QRadioButton>

#include <utility>

namespace karvo
{

DCC_Adresse::DCC_Adresse(const CvSet& set, Prompts& prompts, const LanguageTables& texts, QWidget* parent)
    : AddressWindow(texts, "DCC_Adresse", Caption::addressesTitle, parent),
      set_(set),
      prompts_(prompts),
      shortForm_(captioned<QRadioButton>("ShortForm", this, onButton(Caption::shortAddresses))),
      longForm_(captioned<QRadioButton>("LongForm", this, onButton(Caption::longAddresses)))
{
    const TypedAddresses addresses = addressesOf(set_);
    build(addresses.secondAnswers);
    const bool isLong = addresses.form == AddressForm::longForm;
    (isLong ? longForm_ : shortForm_)->setChecked(true);
    first_.address->setText(qtText(addresses.first));
    second_.address->setText(qtText(addresses.second));
    otherForm_ = fieldsOf(isLong ? AddressForm::shortForm : AddressForm::longForm);
    connect(longForm_, &QRadioButton::toggled, this, &DCC_Adresse::showForm);
    showPlan();
    nothingToLose();
    first_.address->setFocus();
}

void DCC_Adresse::build(std::optional<bool> secondAnswers)
{
    add(*shortForm_);
    add(*longForm_);
    first_ = addAddress("Erste_Adresse", "Erste_AD", Caption::firstAddressField);
    second_ = addAddress("Zweite_Adresse", "Zweite_AD", Caption::secondAddressField);
    if (secondAnswers) {
        secondAnswers_ = checkBox("Check2", Caption::secondAddressAnswers, *secondAnswers);
        add(*secondAnswers_);
    }
    addPlan();
    addText(Caption::configurationNote);
}

// As the list has them: the CVs of both forms stand in it.
DCC_Adresse::Fields DCC_Adresse::fieldsOf(AddressForm form) const
{
    return {qtText(firstAddressOf(set_.table, form)), qtText(secondAddressOf(set_.table, form))};
}

// What was typed in the form before is kept for it.
void DCC_Adresse::showForm()
{
    const Fields shown = std::exchange(otherForm_, {first_.address->text(), second_.address->text()});
    first_.address->setText(shown.first);
    second_.address->setText(shown.second);
    showPlan();
}

bool DCC_Adresse::holdsWork() const
{
    const bool isLong = longForm_->isChecked();
    return AddressWindow::holdsWork() ||
           otherForm_ != fieldsOf(isLong ? AddressForm::shortForm : AddressForm::longForm);
}

void DCC_Adresse::showPlan()
{
    const auto planned = planOfAddresses(typed(), set_.table);
    if (const auto* const plan = std::get_if<WritePlan>(&planned))
        showLines(*plan);
    else
        showWords(texts_.message(std::get<Message>(planned)));
}

TypedAddresses DCC_Adresse::typed() const
{
    return {longForm_->isChecked() ? AddressForm::longForm : AddressForm::shortForm,
            typedText(first_.address->text()),
            typedText(second_.address->text()),
            first_.write->isChecked(),
            second_.write->isChecked(),
            secondAnswers_ != nullptr ? std::optional(secondAnswers_->isChecked()) : std::nullopt};
}

void DCC_Adresse::write()
{
    const TypedAddresses addresses = typed();
    auto planned = planOfAddresses(addresses, set_.table);
    if (const auto* const wrong = std::get_if<Message>(&planned)) {
        const bool isFirst =
            *wrong == Message::firstShortAddressWrong || *wrong == Message::firstLongAddressWrong;
        refuse(*(isFirst ? first_ : second_).address, texts_.message(*wrong), prompts_);
        return;
    }
    auto& plan = std::get<WritePlan>(planned);
    const auto question = questionBefore(addresses, plan, texts_);
    if (!question || prompts_.question(*question))
        finish(std::move(plan));
}

} // namespace karvo
