// The DCC addresses of two servos: from their CVs, checked, and as the CVs that are to be written.
#pragma once

#include "cvdata/cv_set.h"
#include "language/language_tables.h"
#include "workbench/write_plan.h"

#include <span>
#include <variant>

namespace karvo
{

// `servo`: 1 or 2. The second one has an address only where the list uses its CVs.
bool hasServoAddress(const CvSet& set, int servo);

// As a number; empty for a servo without an address, and where a CV has no value.
Text servoAddressOf(const CvTable& table, int servo);

// As the person has typed and ticked it.
struct TypedServoAddress {
    int servo;
    Text address; // 1 to 9999; empty or 0 for none
    bool write = true;
};

// Both CVs of each servo that is ticked, then the CV that makes a receiver use them. Or the first servo whose
// address is outside its range. One that is not ticked is not looked at.
std::variant<WritePlan, int> planOfServoAddresses(std::span<const TypedServoAddress> addresses,
                                                  const CvSet& set);

// What is said when all of the plan was written: "CV11 + CV12  ..." for servo 1, and likewise for servo 2.
Text servoAddressesWritten(const WritePlan& plan, const LanguageTables& texts);

} // namespace karvo
