#include "workbench/line_use.h"

namespace karvo
{

LineUse::LineUse(Workbench& bench) : bench_(bench), granted_(!bench.state.lineBusy)
{
    if (!granted_)
        return;
    bench_.state.lineBusy = true;
    bench_.state.stopRequested = false;
    bench_.view.showLineBusy(true);
}

LineUse::~LineUse()
{
    if (!granted_)
        return;
    bench_.state.lineBusy = false;
    bench_.view.showLineBusy(false);
}

} // namespace karvo
