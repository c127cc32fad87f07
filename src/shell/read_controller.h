// Reading the vehicle from the main window, and clearing what was read.
#pragma once

#include "workbench/full_read.h"
#include "workbench/workbench.h"

#include <QObject>

class QTimer;

namespace karvo
{

class EntryController;
class Operations;
class PortBar;
class StaleNotice;

class ReadController : public QObject
{
public:
    ReadController(Workbench& bench, QWidget& window, Operations& operations, EntryController& entry,
                   PortBar& portBar, StaleNotice& staleNotice);

    void read(ReadStarter starter);

    // Reads as soon as the current event has been handled, unless something else is shown meanwhile.
    void readSoon();
    void readNoMore();

    void clear();

private:
    Workbench& bench_;
    Operations& operations_;
    EntryController& entry_;
    PortBar& portBar_;
    QTimer* timer_; // "Timer3": the deferred read
};

} // namespace karvo
