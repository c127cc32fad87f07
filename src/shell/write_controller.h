// Writing from the main window: what is written, the preview before, and the report after.
#pragma once

#include "workbench/workbench.h"
#include "workbench/write_backup.h"
#include "workbench/write_plan.h"
#include "workbench/write_preview.h"
#include "workbench/write_report.h"

#include <QObject>

#include <functional>
#include <vector>

class QTimer;

namespace karvo
{

class CvPanel;
class EntryController;
class Operations;

class WriteController : public QObject
{
public:
    WriteController(Workbench& bench, QWidget& window, Operations& operations, EntryController& entry,
                    CvPanel& panel, KeepBackup keepBackup);

    void writeCurrent();
    void writeAllCvs();
    void reset();

    // What an editor hands over. Success is claimed only when each CV was written; else the report tells what
    // was and what was not. False when the line was taken, before the values stood in the list: they are in
    // the editor alone, which opens again.
    bool writeEdited(const WritePlan& plan, const Text& done);

private:
    void writeSeriesOfCurrent();
    void writeChangedCvs();
    void operate(const std::function<void()>& write);
    void writeMany(const std::function<WriteReport(const std::vector<int>&)>& write);
    ConfirmPlan preview();
    bool showReport(const WriteReport& report);
    void restoreNotice(CvPanel& panel);
    void chooseNotice(bool wanted);

    Workbench& bench_;
    ProgramState& state_;
    QWidget& window_;
    Operations& operations_;
    EntryController& entry_;
    KeepBackup keepBackup_;
    QTimer* seriesTimer_; // "Timer4": the deferred write of the series CV167 to CV171
};

} // namespace karvo
