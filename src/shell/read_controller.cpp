#include "shell/read_controller.h"

#include "shell/entry_controller.h"
#include "shell/named_timer.h"
#include "shell/operation.h"
#include "shell/port_bar.h"
#include "shell/stale_notice.h"
#include "workbench/list_files.h"
#include "workbench/put_on_bench.h"

namespace karvo
{

ReadController::ReadController(Workbench& bench, QWidget& window, Operations& operations,
                               EntryController& entry, PortBar& portBar, StaleNotice& staleNotice)
    : bench_(bench),
      operations_(operations),
      entry_(entry),
      portBar_(portBar),
      timer_(newTimer("Timer3", std::chrono::milliseconds(100), window))
{
    timer_->setSingleShot(true);
    const auto readAnew = [this] { read(ReadStarter::other); };
    connect(timer_, &QTimer::timeout, this, readAnew);
    connect(&staleNotice, &StaleNotice::readWanted, this, readAnew);
    connect(&portBar, &PortBar::readWanted, this, [this] { read(ReadStarter::button); });
}

void ReadController::read(ReadStarter starter)
{
    readNoMore();
    if (bench_.state.lineBusy || !entry_.takePending() || !mayReplaceSet(bench_))
        return;
    const Operation operation(operations_, OperationKind::read);
    const auto end = readIntoList(bench_, starter);
    if (operations_.isClosing())
        return;
    if (end == ReadEnd::read)
        entry_.focusList();
    else if (starter == ReadStarter::button)
        portBar_.focusStart(); // it lost the focus when it was disabled
}

void ReadController::readSoon()
{
    timer_->start();
}

void ReadController::readNoMore()
{
    timer_->stop();
}

void ReadController::clear()
{
    if (bench_.state.lineBusy || !mayReplaceSet(bench_))
        return;
    clearDisplay(bench_);
    bench_.view.showStatus(bench_.state.texts.caption(Caption::ready));
}

} // namespace karvo
