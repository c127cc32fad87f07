// Renewing a decoder's firmware from the main window.
#pragma once

#include "program/clock.h"
#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class BenchDisplay;
class Operations;

class FirmwareController : public QObject
{
public:
    FirmwareController(Workbench& bench, QWidget& window, BenchDisplay& display, Operations& operations,
                       const Clock& clock);

    // Through the decoder's boot loader.
    void upgrade();

    // Through the programming interface.
    void update();

private:
    Workbench& bench_;
    QWidget& window_;
    BenchDisplay& display_;
    Operations& operations_;
    const Clock& clock_;
};

} // namespace karvo
