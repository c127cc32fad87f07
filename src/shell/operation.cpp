#include "shell/operation.h"

#include "shell/entry_controller.h"
#include "shell/main_window_view.h"
#include "shell/status_line.h"
#include "workbench/list_files.h"
#include "workbench/recovery.h"

#include <QApplication>

#include <utility>

namespace karvo
{

Operations::Operations(Workbench& bench, MainWindowView& view, QWidget& window, EntryController& entry,
                       StatusLine& statusLine)
    : bench_(bench), window_(window), entry_(entry), stopQuestion_(bench.state)
{
    connect(&statusLine, &StatusLine::stopWanted, this, &Operations::stop);
    connect(&view, &MainWindowView::lineBusyShown, this, [this](bool busy) {
        if (!busy)
            stopQuestion_.withdraw();
    });
    connect(&stopQuestion_, &StopQuestion::agreed, this, [this] {
        if (!isClosing()) // the program may be ending by now
            closing_ = Closing::asUsual;
    });
}

bool Operations::mayClose()
{
    if (!bench_.state.lineBusy)
        return agreesToClose();
    if (kind_ == OperationKind::transfer && !isClosing()) {
        askToStopTransfer();
    } else if (kind_ == OperationKind::write && !isClosing()) {
        bench_.state.stopRequested = true;
        closing_ = Closing::asUsual;
    } else {
        closing_ = Closing::withoutQuestion;
        bench_.prompts.endProgram();
    }
    return false;
}

bool Operations::agreesToClose()
{
    if (closing_ == Closing::withoutQuestion)
        return true;
    const bool agrees = entry_.takePending() && mayReplaceSet(bench_);
    if (agrees)
        dropRecovery(bench_.state.recovery, bench_.files);
    else
        closing_ = Closing::no;
    return agrees;
}

void Operations::askToStopTransfer()
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (bench_.state.stopRequested)
        closing_ = Closing::asUsual; // it has been agreed to in the window of the transfer
    else
        stopQuestion_.ask(dialog != nullptr ? dialog : &window_);
}

void Operations::stop()
{
    bench_.state.stopRequested = true;
    bench_.wait.wake(); // a read does not go on waiting for its reply
}

Operation::Operation(Operations& operations, OperationKind kind)
    : operations_(operations), around_(std::exchange(operations.kind_, kind))
{
}

Operation::~Operation()
{
    operations_.kind_ = around_;
    if (!around_ && operations_.isClosing())
        operations_.window_.close();
}

} // namespace karvo
