// The DCC addresses of the servos: entered, checked, and shown as CVs before they are written.
#pragma once

#include "editors/forms/address_window.h"
#include "editors/servo_addresses.h"
#include "program/prompts.h"

#include <vector>

namespace karvo
{

class Servo_Addresse final : public AddressWindow
{
    Q_OBJECT

public:
    Servo_Addresse(const CvSet& set, Prompts& prompts, const LanguageTables& texts,
                   QWidget* parent = nullptr);

protected:
    void showPlan() override;
    void write() override;

private:
    void build();
    std::vector<TypedServoAddress> typed() const;
    Text refusalOf(int servo) const;

    const CvSet& set_;
    Prompts& prompts_;
    std::vector<AddressRow> rows_; // of servo 1, and of servo 2 where it has an address
};

} // namespace karvo
