// Carrying out the plan of a write of many.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_backup.h"
#include "workbench/write_plan.h"
#include "workbench/write_report.h"

namespace karvo
{

// Keeps the block that was read, writes the plan's CVs in its order and makes the list anew. The line has to
// be in use by the caller, and the decoder to be written the one that was identified last.
WriteReport runPlan(Workbench& bench, const WritePlan& plan, const KeepBackup& keepBackup);

} // namespace karvo
