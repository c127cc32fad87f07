// Changing values in the main window, and writing them.
#include "cvdata/forms/cv_panel.h"
#include "link/series_write.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "shell/status_line.h"
#include "shell/write_report_dialog.h"
#include "ui/fixed_width_list.h"
#include "ui/typed_text.h"
#include "workbench/change_value.h"
#include "workbench/forms/schreibvorschau.h"
#include "workbench/write_many.h"
#include "workbench/write_single.h"

#include <QAction>
#include <QShortcut>

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
    connect(panel_, &CvPanel::valueEntered, this, &Hauptform::enterValue);
    connect(panel_, &CvPanel::bitsChosen, this, &Hauptform::enterBits);
    connect(panel_, &CvPanel::entryCancelled, this, [this] { list_->setFocus(); });
    connect(panel_, &CvPanel::takeBackWanted, this, &Hauptform::takeBackCurrent);
    connect(panel_, &CvPanel::takeBackAllWanted, this, &Hauptform::takeBackAll);
    connect(panel_, &CvPanel::writeSingleWanted, this, &Hauptform::writeCurrent);
    connect(panel_, &CvPanel::writeChangedWanted, this, &Hauptform::writeChangedCvs);
    connect(panel_, &CvPanel::noticeChosen, this, &Hauptform::chooseNotice);
    connect(list_, &FixedWidthList::digitTyped, panel_, &CvPanel::beginEntry);
    connect(list_, &FixedWidthList::entryWanted, panel_, [this] { panel_->beginEntry(); });
    connect(list_, &FixedWidthList::stepWanted, this, &Hauptform::stepValue);
    connect(statusLine_, &StatusLine::stopWanted, this, [this] {
        state_.stopRequested = true;
        bench_.wait.wake(); // a read does not go on waiting for its reply
    });
    connect(&sequenceTimer_, &QTimer::timeout, this, &Hauptform::writeSeriesOfCurrent);
    connect(menu_->action("mnu_write_single"), &QAction::triggered, this, &Hauptform::writeCurrent);
    connect(menu_->action("mnu_write_all"), &QAction::triggered, this, &Hauptform::writeAllCvs);
    connect(menu_->action("mnu_reset"), &QAction::triggered, this, &Hauptform::reset);
    auto* const undo = new QShortcut(QKeySequence::Undo, list_);
    undo->setObjectName(QStringLiteral("TakeBack"));
    connect(undo, &QShortcut::activated, this, &Hauptform::takeBackCurrent);
    const auto stored = bench_.settings.get(windowSection, noticeKey);
    state_.link.noticeAfterWrite = stored && *stored == u"1";
    panel_->setNotice(state_.link.noticeAfterWrite);
}

// The field keeps the keyboard after a value that was refused, so that it can be mended.
void Hauptform::enterValue(const QString& typed)
{
    if (changeValue(bench_, state_.set.currentNumber, typedText(typed)) == ChangeEnd::changed)
        list_->setFocus();
    else
        panel_->beginEntry();
}

void Hauptform::enterBits(int value)
{
    if (changeValue(bench_, state_.set.currentNumber, value) != ChangeEnd::changed)
        showDetails(); // the boxes as the value has them
}

// At a limit the value stays, without a message: the key may be held down.
void Hauptform::stepValue(int by)
{
    const CvSet& set = state_.set;
    const auto value = set.currentNumber == 0 ? std::nullopt : set.table.value(set.currentNumber);
    if (!value)
        return;
    const auto limits = limitsOf(set.table, set.currentNumber);
    if (limits.allow(*value + by))
        changeValue(bench_, set.currentNumber, *value + by);
}

void Hauptform::takeBackCurrent()
{
    takeBackValue(bench_, state_.set.currentNumber);
}

void Hauptform::takeBackAll()
{
    takeBackAllValues(bench_);
}

// What was typed and not taken is meant to be written too. False when it was refused.
bool Hauptform::takePendingValue()
{
    const auto typed = panel_->pendingValue();
    return !typed || changeValue(bench_, state_.set.currentNumber, typedText(*typed)) == ChangeEnd::changed;
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
