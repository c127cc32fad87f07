// The two DCC addresses of a vehicle: from its CVs, checked, and as the CVs that are to be written.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"
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
    // Bit 1 of CV21: the vehicle answers to its second address too. Nothing where the model has no such
    // switch: CV21 is left alone then.
    std::optional<bool> secondAnswers = {};
};

// What the list holds; an address without its CVs is empty.
TypedAddresses addressesOf(const CvSet& set);

// The address of that form; empty where a CV of it has no value.
Text firstAddressOf(const CvTable& table, AddressForm form);
Text secondAddressOf(const CvTable& table, AddressForm form);

// Which CVs get which values, in the order of writing: the addresses, then CV29 as a whole (0 or 32), then
// CV21. Or the message of what is wrong with an address: both are checked before anything is written, ticked
// or not. A second address that is not ticked may be empty or 0: a vehicle without one can be programmed. A
// long one that is empty is left out.
std::variant<WritePlan, Message> planOfAddresses(const TypedAddresses& addresses, const CvTable& table);

// What the person is asked before that plan is carried out: when it holds no address at all, and when both
// are the same. Nothing for all others.
std::optional<Text> questionBefore(const TypedAddresses& addresses, const WritePlan& plan,
                                   const LanguageTables& texts);

// "CV17 = 0": a line of what will be written.
Text plannedLine(const PlannedWrite& write);

} // namespace karvo
