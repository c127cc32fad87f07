#include "workbench/line_use.h"

namespace karvo
{

LineUse::LineUse(Workbench& bench, LineTask task)
    : bench_(bench),
      granted_(!bench.state.lineBusy),
      keepsAwake_(granted_ && task == LineTask::lasting && bench.stayAwake != nullptr)
{
    if (!granted_)
        return;
    bench_.state.lineBusy = true;
    bench_.state.stopRequested = false;
    bench_.view.showLineBusy(true);
    if (keepsAwake_)
        bench_.stayAwake->begin(bench_.state.texts.caption(Caption::keptAwake));
}

LineUse::~LineUse()
{
    if (!granted_)
        return;
    if (keepsAwake_)
        bench_.stayAwake->end();
    bench_.state.lineBusy = false;
    bench_.view.showLineBusy(false);
}

} // namespace karvo
