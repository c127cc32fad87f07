// Carrying out the plan of a write of many.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_guard.h"
#include "workbench/write_plan.h"
#include "workbench/write_report.h"

namespace karvo
{

// Whether a success is told by each write, or by the caller at the end.
enum class RunKind { single, many };

// Lets the plan through the guard, unless it has met the vehicle already, writes its CVs in its order and
// makes the list anew. The line has to be in use by the caller.
WriteReport runPlan(Workbench& bench, const WritePlan& plan, WriteGuard& guard, RunKind kind);

} // namespace karvo
