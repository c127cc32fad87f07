#include "shell/write_controller.h"

#include "cvdata/forms/cv_panel.h"
#include "link/write.h"
#include "shell/entry_controller.h"
#include "shell/named_timer.h"
#include "shell/operation.h"
#include "shell/write_report_dialog.h"
#include "workbench/forms/schreibvorschau.h"
#include "workbench/write_many.h"
#include "workbench/write_single.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::string_view windowSection = "Window";
constexpr std::string_view noticeKey = "NoticeAfterWrite";

std::vector<int> seriesCvs()
{
    std::vector<int> cvs;
    for (int cv = firstSeriesCv; cv <= lastSeriesCv; ++cv)
        cvs.push_back(cv);
    return cvs;
}

// The CVs of a series belong together: none of them is written without the others.
bool belongsToSeries(const CvSet& set)
{
    const auto cvs = seriesCvs();
    return set.currentNumber >= firstSeriesCv && set.currentNumber <= lastSeriesCv &&
           std::all_of(cvs.begin(), cvs.end(), [&](int cv) { return set.table.value(cv).has_value(); });
}

} // namespace

WriteController::WriteController(Workbench& bench, QWidget& window, Operations& operations,
                                 EntryController& entry, CvPanel& panel, KeepBackup keepBackup)
    : bench_(bench),
      state_(bench.state),
      window_(window),
      operations_(operations),
      entry_(entry),
      keepBackup_(std::move(keepBackup)),
      seriesTimer_(newTimer("Timer4", std::chrono::milliseconds(200), window))
{
    seriesTimer_->setSingleShot(true);
    connect(seriesTimer_, &QTimer::timeout, this, &WriteController::writeSeriesOfCurrent);
    connect(&panel, &CvPanel::writeSingleWanted, this, &WriteController::writeCurrent);
    connect(&panel, &CvPanel::writeChangedWanted, this, &WriteController::writeChangedCvs);
    connect(&panel, &CvPanel::noticeChosen, this, &WriteController::chooseNotice);
    restoreNotice(panel);
}

void WriteController::writeCurrent()
{
    if (!entry_.takePending())
        return;
    if (belongsToSeries(state_.set))
        seriesTimer_->start();
    else
        operate([this] { writeSingle(bench_, keepBackup_); });
}

// The series is written whole, its rest too.
void WriteController::writeSeriesOfCurrent()
{
    writeMany([this](const std::vector<int>&) { return writeChosen(bench_, seriesCvs(), keepBackup_); });
}

void WriteController::writeChangedCvs()
{
    writeMany([this](const std::vector<int>& only) {
        return writeChanged(bench_, keepBackup_, {.confirm = preview(), .only = only});
    });
}

void WriteController::writeAllCvs()
{
    writeMany([this](const std::vector<int>& only) {
        return writeAll(bench_, keepBackup_, {.confirm = preview(), .only = only});
    });
}

void WriteController::reset()
{
    operate([this] { resetDecoder(bench_, keepBackup_); });
}

bool WriteController::writeEdited(const WritePlan& plan, const Text& done)
{
    auto end = WriteManyEnd::busy;
    operate([&] {
        auto report = writeValues(bench_, plan, keepBackup_);
        end = report.end;
        if (end == WriteManyEnd::finished && report.isClean()) {
            bench_.prompts.message(done, PromptIcon::information);
            return;
        }
        while (showReport(report)) {
            report = writeValues(bench_, restOf(plan, report.rest()), keepBackup_);
            end = report.end;
        }
    });
    return end != WriteManyEnd::busy;
}

void WriteController::operate(const std::function<void()>& write)
{
    if (state_.lineBusy || !entry_.takePending())
        return;
    const Operation operation(operations_, OperationKind::write);
    write();
    const QWidget* const focused = window_.focusWidget();
    if (!operations_.isClosing() && (focused == nullptr || !focused->isEnabled()))
        entry_.focusList(); // what had the keyboard was disabled meanwhile
}

// `write`: just these CVs of what it is about, or all of it.
void WriteController::writeMany(const std::function<WriteReport(const std::vector<int>&)>& write)
{
    operate([&] {
        auto report = write({});
        while (showReport(report))
            report = write(report.rest());
    });
}

ConfirmPlan WriteController::preview()
{
    return [this](WritePreview& preview) {
        // Where everything is left out the report says so, with the reasons.
        if (preview.countOfWritten() == 0 && !preview.rows.empty())
            return PreviewAnswer::write;
        Schreibvorschau window(preview, state_, &window_);
        window.exec();
        return operations_.isClosing() ? PreviewAnswer::cancel : window.answer();
    };
}

// Where nothing was to be written, or a message has said why nothing was, there is nothing to list. True when
// the rest is to be written.
bool WriteController::showReport(const WriteReport& report)
{
    if (operations_.isClosing() || !report.hasRun())
        return false;
    return Schreibbericht(report, state_.texts, &window_).exec() == QDialog::Accepted &&
           !operations_.isClosing();
}

void WriteController::restoreNotice(CvPanel& panel)
{
    const auto stored = bench_.settings.get(windowSection, noticeKey);
    state_.link.noticeAfterWrite = stored && *stored == u"1";
    panel.setNotice(state_.link.noticeAfterWrite);
}

void WriteController::chooseNotice(bool wanted)
{
    state_.link.noticeAfterWrite = wanted;
    bench_.settings.save(windowSection, noticeKey, wanted ? u"1" : u"0");
}

} // namespace karvo
