#include "editors/forms/servo_addresse.h"

#include "editors/editor_gate.h"
#include "link/write.h"
#include "ui/captions.h"
#include "ui/typed_text.h"

#include <QCheckBox>
#include <QLineEdit>

namespace karvo
{

Servo_Addresse::Servo_Addresse(const CvSet& set, Prompts& prompts, const LanguageTables& texts,
                               QWidget* parent)
    : AddressWindow(texts, "Servo_Addresse", Caption::servoAddressesTitle, parent),
      set_(set),
      prompts_(prompts)
{
    build();
    showPlan();
    nothingToLose();
    rows_.front().address->setFocus();
}

void Servo_Addresse::build()
{
    addText(Caption::servoAddressRange);
    rows_.push_back(addAddress("Servo1_Adresse", "Servo1_AD", Caption::servo1AddressField));
    if (hasServoAddress(set_, 2))
        rows_.push_back(addAddress("Servo2_Adresse", "Servo2_AD", Caption::servo2AddressField));
    for (std::size_t at = 0; at < rows_.size(); ++at)
        rows_[at].address->setText(qtText(servoAddressOf(set_.table, static_cast<int>(at) + 1)));
    addPlan();
    if (dealsWith(Editor::servoAddresses, set_, firstServoTakeOverCv))
        addText(Caption::servoTakeOverNote);
}

std::vector<TypedServoAddress> Servo_Addresse::typed() const
{
    std::vector<TypedServoAddress> addresses;
    for (const AddressRow& row : rows_)
        addresses.push_back(
            {static_cast<int>(addresses.size()) + 1, typedText(row.address->text()), row.write->isChecked()});
    return addresses;
}

Text Servo_Addresse::refusalOf(int servo) const
{
    return texts_.message(Message::servoAddressWrong, {textFromNumber(servo)});
}

// Also while the window is being built: then nothing is typed yet, and the lines are made at its end.
void Servo_Addresse::showPlan()
{
    const auto planned = planOfServoAddresses(typed(), set_);
    const auto* const plan = std::get_if<WritePlan>(&planned);
    const bool isNone = plan != nullptr && plan->empty();
    writing().setEnabled(!isNone);
    if (plan == nullptr)
        showWords(refusalOf(std::get<int>(planned)));
    else if (isNone)
        showWords(texts_.caption(Caption::nothingTicked));
    else
        showLines(*plan);
}

void Servo_Addresse::write()
{
    auto planned = planOfServoAddresses(typed(), set_);
    if (const auto* const servo = std::get_if<int>(&planned)) {
        refuse(*rows_[static_cast<std::size_t>(*servo) - 1].address, refusalOf(*servo), prompts_);
        return;
    }
    finish(std::move(std::get<WritePlan>(planned)));
}

} // namespace karvo
