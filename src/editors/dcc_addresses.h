// The two DCC addresses of a vehicle: from its CVs, checked, and as the CVs that are to be written.
#pragma once

#include "cvdata/cv_table.h"
#include "language/text_numbers.h"
#include "workbench/write_plan.h"

#include <optional>
#include <variant>

namespace karvo
{

enum class AddressForm {
    shortForm, // 1 to 126, in one CV each: CV1 and CV3
    longForm   // 128 to 9999, in two CVs each: CV17 and CV18, CV15 and CV16
};

// As the person has typed and ticked them.
struct TypedAddresses {
    AddressForm form = AddressForm::shortForm;
    Text first;
    Text second;
    bool writeFirst = true;
    bool writeSecond = true;
    bool secondAnswers = false; // bit 1 of CV21: the vehicle answers to its second address too
};

// What the table holds; an address without its CVs is empty.
TypedAddresses addressesOf(const CvTable& table);

// The address of that form; empty where a CV of it has no value.
Text firstAddressOf(const CvTable& table, AddressForm form);
Text secondAddressOf(const CvTable& table, AddressForm form);

// Which CVs get which values, in the order of writing: the addresses, then CV29 as a whole (0 or 32), then
// CV21. Or the message of what is wrong with an address: both are checked before anything is written. A long
// second address that is empty is left out.
std::variant<WritePlan, Message> planOfAddresses(const TypedAddresses& addresses, const CvTable& table);

// "CV17 = 0": a line of what will be written.
Text plannedLine(const PlannedWrite& write);

} // namespace karvo
