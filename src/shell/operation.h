// What is under way in the main window, and what closing the window comes to meanwhile.
#pragma once

#include "firmware/forms/stop_question.h"
#include "workbench/workbench.h"

#include <optional>

namespace karvo
{

class EntryController;
class MainWindowView;
class StatusLine;

enum class OperationKind {
    read,
    write,    // not torn: closing the window lets what was announced to the decoder come to its end
    transfer, // of firmware: closing the window asks first
    other
};

// Closing the window while the line is busy never closes it at once: the wait ends first, and the window goes
// when the operation has unwound.
class Operations : public QObject
{
public:
    Operations(Workbench& bench, MainWindowView& view, QWidget& window, EntryController& entry,
               StatusLine& statusLine);

    // Whether the window, which is being closed, may go now. Without an operation that is asked where
    // something would be lost; who asks again during one means it, and the program ends.
    bool mayClose();

    // The window closes with the end of the operation under way: nothing more is to be asked or begun.
    bool isClosing() const { return closing_ != Closing::no; }

private:
    friend class Operation;

    enum class Closing {
        no,
        asUsual,        // the question about unsaved changes comes first
        withoutQuestion // the program ends: what is unsaved is offered at the next start
    };

    bool agreesToClose();
    void askToStopTransfer();
    void stop();

    Workbench& bench_;
    QWidget& window_;
    EntryController& entry_;
    StopQuestion stopQuestion_;
    std::optional<OperationKind> kind_;
    Closing closing_ = Closing::no;
};

// An operation of the main window, for its own lifetime. One within another one is of its own kind until it
// ends. With the end of the outermost one the window closes, where that was wanted meanwhile.
class Operation
{
public:
    Operation(Operations& operations, OperationKind kind);
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    Operations& operations_;
    std::optional<OperationKind> around_;
};

} // namespace karvo
