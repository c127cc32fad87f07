// Changing values in the main window, and writing them.
#include "cvdata/forms/cv_panel.h"
#include "link/write.h"
#include "shell/hauptform.h"
#include "shell/status_line.h"
#include "shell/write_report_dialog.h"
#include "ui/fixed_width_list.h"
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

void Hauptform::connectWriting()
{
    connect(panel_, &CvPanel::writeSingleWanted, this, &Hauptform::writeCurrent);
    connect(panel_, &CvPanel::writeChangedWanted, this, &Hauptform::writeChangedCvs);
    connect(panel_, &CvPanel::noticeChosen, this, &Hauptform::chooseNotice);
    connect(statusLine_, &StatusLine::stopWanted, this, [this] {
        state_.stopRequested = true;
        bench_.wait.wake(); // a read does not go on waiting for its reply
    });
    connect(&sequenceTimer_, &QTimer::timeout, this, &Hauptform::writeSeriesOfCurrent);
    whenChosen("mnu_write_single", &Hauptform::writeCurrent);
    whenChosen("mnu_write_all", &Hauptform::writeAllCvs);
    whenChosen("mnu_reset", &Hauptform::reset);
    const auto stored = bench_.settings.get(windowSection, noticeKey);
    state_.link.noticeAfterWrite = stored && *stored == u"1";
    panel_->setNotice(state_.link.noticeAfterWrite);
}

void Hauptform::operate(const std::function<void()>& write)
{
    if (state_.lineBusy || !takePendingValue())
        return;
    writing_ = true;
    write();
    writing_ = false;
    if (closing_)
        close();
    else if (focusWidget() == nullptr || !focusWidget()->isEnabled())
        list_->setFocus(); // what had the keyboard was disabled meanwhile
}

void Hauptform::writeCurrent()
{
    if (!takePendingValue())
        return;
    if (belongsToSeries(state_.set))
        sequenceTimer_.start();
    else
        operate([this] { writeSingle(bench_, keepBackup_); });
}

// The series is written whole, its rest too.
void Hauptform::writeSeriesOfCurrent()
{
    writeMany([this](const std::vector<int>&) { return writeChosen(bench_, seriesCvs(), keepBackup_); });
}

void Hauptform::writeChangedCvs()
{
    writeMany([this](const std::vector<int>& only) {
        return writeChanged(bench_, keepBackup_, {.confirm = preview(), .only = only});
    });
}

void Hauptform::writeAllCvs()
{
    writeMany([this](const std::vector<int>& only) {
        return writeAll(bench_, keepBackup_, {.confirm = preview(), .only = only});
    });
}

ConfirmPlan Hauptform::preview()
{
    return [this](WritePreview& preview) {
        // Where everything is left out the report says so, with the reasons.
        if (preview.countOfWritten() == 0 && !preview.rows.empty())
            return PreviewAnswer::write;
        Schreibvorschau window(preview, state_, this);
        window.exec();
        return closing_ ? PreviewAnswer::cancel : window.answer();
    };
}

// `write`: just these CVs of what it is about, or all of it.
void Hauptform::writeMany(const std::function<WriteReport(const std::vector<int>&)>& write)
{
    operate([&] {
        auto report = write({});
        while (showReport(report))
            report = write(report.rest());
    });
}

void Hauptform::reset()
{
    operate([this] { resetDecoder(bench_, keepBackup_); });
}

// Where nothing was to be written, or a message has said why nothing was, there is nothing to list. True when
// the rest is to be written.
bool Hauptform::showReport(const WriteReport& report)
{
    if (closing_ || !report.hasRun())
        return false;
    return Schreibbericht(report, texts_, this).exec() == QDialog::Accepted && !closing_;
}

void Hauptform::chooseNotice(bool wanted)
{
    state_.link.noticeAfterWrite = wanted;
    bench_.settings.save(windowSection, noticeKey, wanted ? u"1" : u"0");
}

} // namespace karvo
