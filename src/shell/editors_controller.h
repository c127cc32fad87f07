// The windows of the vehicle's functions, opened from the main window.
#pragma once

#include "editors/editor_gate.h"
#include "workbench/workbench.h"

#include <QObject>

#include <string_view>

namespace karvo
{

class EntryController;
class Operations;
class PortBar;
class WriteController;

class EditorsController : public QObject
{
public:
    EditorsController(Workbench& bench, QWidget& window, Operations& operations, EntryController& entry,
                      WriteController& writing, PortBar& portBar);

    void editAddresses();
    void editServoAddresses();
    void editSpeedSteps();
    // Those of the vehicle that was read last, only to be looked at; or why that is not possible.
    void showReadSpeedSteps();
    std::optional<Text> whyNoReadSpeedSteps() const;
    void editBraking();
    void editBrakingOf(const char* preset); // a file in "ABS_listen"
    void setUpBothServos();
    void setUpFirstServo();
    void setUpSecondServo();
    void setUpServoTimes();

private:
    bool mayOpen(Editor editor);
    void openSpeedSteps();
    template <typename Window>
    void setUp(Editor editor);

    Workbench& bench_;
    const LanguageTables& texts_;
    QWidget& window_;
    Operations& operations_;
    EntryController& entry_;
    WriteController& writing_;
};

} // namespace karvo
