// Speed steps whose values lie outside their limits: how they are told, and the question before they are
// written.
#pragma once

#include "cvdata/cv_use.h"
#include "workbench/workbench.h"
#include "workbench/write_plan.h"

#include <vector>

namespace karvo
{

struct StepOutside {
    int step; // 1 to 28
    int value;
    ValueLimits limits;
};

// Nothing for a CV that is no step of the model's speed table, and for a value that its limits allow.
std::optional<StepOutside> stepOutside(const CvTable& table, int cv, int value);

// Those of the plan that are left out for their limits; ascending by step.
std::vector<StepOutside> stepsOutside(const WritePlan& plan, const CvTable& table);

// A line for each pair of limits: "erlaubt 3 bis 168: Fahrstufe 27 = 175, 28 = 180"; the steps in any order.
Text stepsOutsideText(std::vector<StepOutside> steps, const LanguageTables& texts);

// Where the plan leaves speed steps out for their limits one question names them: after a Yes the table is
// written whole.
void askAboutStepsOutside(Workbench& bench, WritePlan& plan);

} // namespace karvo
