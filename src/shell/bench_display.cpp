#include "shell/bench_display.h"

#include "cvdata/changes.h"
#include "cvdata/forms/cv_panel.h"
#include "editors/editor_gate.h"
#include "link/identification.h"
#include "program/path_text.h"
#include "shell/main_menu.h"
#include "shell/main_window_view.h"
#include "shell/memory_controller.h"
#include "shell/menu_reasons.h"
#include "shell/port_bar.h"
#include "shell/program_version.h"
#include "shell/stale_notice.h"
#include "shell/status_line.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"

#include <QMainWindow>
#include <QSignalBlocker>

namespace karvo
{

BenchDisplay::BenchDisplay(ProgramState& state, const SheetStore& sheets, MainWindowView& view,
                           const MainWidgets& widgets)
    : state_(state), sheets_(sheets), texts_(state.texts), in_(widgets)
{
    connectView(view);
}

void BenchDisplay::connectView(MainWindowView& view)
{
    StatusLine& line = in_.statusLine;
    connect(&view, &MainWindowView::statusShown, this,
            [&line](const Text& text) { line.showStatus(qtText(text)); });
    connect(&view, &MainWindowView::progressShown, this,
            [this, &line](std::size_t done, std::size_t total) { line.showProgress(texts_, done, total); });
    connect(&view, &MainWindowView::writeProgressShown, this,
            [this, &line](int cv, std::size_t rest) { line.showWriteProgress(texts_, cv, rest); });
    connect(&view, &MainWindowView::readingShown, &line, &StatusLine::showReading);
    connect(&view, &MainWindowView::hourglassShown, this, [this](bool shown) {
        if (shown)
            in_.window.setCursor(Qt::WaitCursor);
        else
            in_.window.unsetCursor();
    });
    connect(&view, &MainWindowView::lineBusyShown, this, &BenchDisplay::showLineBusy);
    connect(&view, &MainWindowView::listReplaced, this, &BenchDisplay::showList);
}

void BenchDisplay::applyCaptions()
{
    showTitle();
    in_.menu.applyCaptions(texts_);
    in_.portBar.applyCaptions(texts_);
    in_.portBar.showDecoder(state_);
    in_.staleNotice.applyCaptions(texts_);
    in_.list.setAccessibleName(qtText(texts_.caption(Caption::cvList)));
    in_.list.setEmptyHint(qtText(texts_.caption(Caption::emptyListHint)));
    in_.panel.applyCaptions(texts_);
    in_.statusLine.applyCaptions(texts_);
    showReasons();
}

void BenchDisplay::showList()
{
    std::vector<FixedWidthList::Row> rows;
    rows.reserve(state_.set.list.size());
    for (const ListLine& line : state_.set.list)
        rows.push_back({qtText(line.text), qtText(line.name)});
    in_.list.updateRows(rows);
    in_.list.setEmptyHint(qtText(texts_.caption(Caption::emptyListHint)));
    showTitle();
    in_.window.setWindowModified(state_.set.unsavedChanges);
    in_.staleNotice.setVisible(state_.set.precedesUpdate);
    in_.portBar.showDecoder(state_);
    in_.statusLine.showVersion(qtText(state_.set.isOffline() ? offlineListVersion : programVersion));
    showCurrentRow();
    showDetails();
    showAvailability();
}

void BenchDisplay::showDetails()
{
    const CvSet& set = state_.set;
    const auto expert = set.expert.find(set.currentNumber);
    in_.panel.showCv(cvDetails(set.table, set.currentNumber),
                     expert == set.expert.end() ? Text() : expert->second.knowledge, texts_);
}

void BenchDisplay::showCurrentRow()
{
    const CvSet& set = state_.set;
    const int chosen = in_.list.currentRow();
    const bool fits = chosen >= 0 && static_cast<std::size_t>(chosen) < set.list.size() &&
                      set.currentNumber != 0 &&
                      set.list[static_cast<std::size_t>(chosen)].standsFor(set.currentNumber);
    if (fits)
        return;
    const auto row = positionOf(set.list, set.currentNumber);
    const QSignalBlocker quiet(&in_.list); // nobody has chosen another CV
    in_.list.setCurrentRow(row ? static_cast<int>(*row) : -1);
}

void BenchDisplay::showAvailability()
{
    const CvSet& set = state_.set;
    const int cv = set.currentNumber;
    const bool idle = !state_.lineBusy;
    const bool hasList = !set.isEmpty();
    const bool hasCurrentCv = hasList && cv >= 1 && cv <= CvTable::lastRow && set.table.value(cv).has_value();
    in_.menu.setAvailable(state_.lineBusy, hasList, hasCurrentCv);
    showReasons();
    const bool writable = state_.link.typeCode != TypeCode::readOnlyReceiver;
    const auto whyNot = writable ? std::nullopt : std::optional(texts_.caption(Caption::receiverOnlyRead));
    for (const char* const item : {"mnu_write_single", "mnu_write_all", "mnu_reset"})
        in_.menu.setReason(item, whyNot);
    in_.panel.setAvailable({.choosing = hasList,
                            .changing = idle && hasCurrentCv,
                            .takingBack = idle && isChanged(set, cv),
                            .takingAllBack = idle && !changedCvs(set).empty(),
                            .writingOne = idle && hasCurrentCv && writable,
                            .writingChanged = idle && hasList && writable,
                            .whyNoWriting = whyNot ? qtText(*whyNot) : QString()});
}

void BenchDisplay::showTitle(const QString& note)
{
    in_.window.setWindowTitle(title() + note);
}

void BenchDisplay::showLineBusy(bool busy)
{
    in_.portBar.setLineBusy(busy);
    in_.staleNotice.setLineBusy(busy);
    showAvailability();
    in_.statusLine.setLineBusy(busy);
}

void BenchDisplay::showReasons()
{
    for (const MenuEntry& entry : menuTree()) {
        if (entry.editor || entry.opens != Opens::other)
            in_.menu.setReason(entry.name, whyNotChosen(entry, state_, sheets_));
    }
    in_.menu.setReason("mnu_RAM", whyNoMemory(state_));
    in_.menu.showOwnItems(ownItems(state_, sheets_), state_.lineBusy);
    in_.portBar.setServoAddresses(!state_.lineBusy, whyNotOpen(Editor::servoAddresses, state_.set, texts_));
}

QString BenchDisplay::title() const
{
    const CvSet& set = state_.set;
    QString name = qtText(texts_.caption(Caption::windowTitle));
    if (set.isEmpty())
        return name;
    Text loaded = set.loadedData;
    if (!set.isFromFile() && !set.listPath.empty())
        loaded += u" - " + pathText(set.listPath.filename());
    return name + QStringLiteral(" - ") + qtText(loaded) + QStringLiteral("[*]");
}

} // namespace karvo
