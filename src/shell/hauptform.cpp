#include "shell/hauptform.h"

#include "cvdata/changes.h"
#include "cvdata/forms/cv_panel.h"
#include "link/identification.h"
#include "program/path_text.h"
#include "shell/main_menu.h"
#include "shell/menu_tree.h"
#include "shell/port_bar.h"
#include "shell/stale_notice.h"
#include "shell/status_line.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"
#include "workbench/list_files.h"
#include "workbench/recovery.h"

#include <QCloseEvent>

namespace karvo
{

Hauptform::Hauptform(const MainWindowSetup& setup)
    : bench_(setup.bench),
      state_(setup.bench.state),
      texts_(setup.bench.state.texts),
      listPortDevices_(setup.listPortDevices),
      listNewPorts_(setup.listNewPorts),
      useQtTexts_(setup.useQtTexts),
      menu_(nullptr),
      portBar_(new PortBar(texts_, listPortDevices_, this)),
      staleNotice_(new StaleNotice(this)),
      list_(new FixedWidthList(this)),
      panel_(new CvPanel),
      statusLine_(new StatusLine(setup.simulatedInterface, this)),
      splitter_(nullptr),
      clock_(setup.clock),
      archive_(setup.archive),
      downloader_(setup.downloader),
      keepBackup_(setup.keepBackup),
      stopQuestion_(state_)
{
    buildWindow();
    buildTimers();
    connectView(setup.view);
    connectControls();
    connectMenu();
    connectFiles();
    connectEditors();
    connectServos();
    connectEntry();
    connectWriting();
    connectFirmware();
    connectDownload();
    menu_->markLanguage(state_.language);
    portBar_->showPort(state_.link.portNumber);
    applyCaptions();
    showList();
    setup.view.showStatus(texts_.caption(Caption::ready));
    restorePlacement();
    portBar_->focusStart();
}

void Hauptform::closeEvent(QCloseEvent* event)
{
    savePlacement();
    if (!state_.lineBusy) {
        const bool mayClose = ending_ || (takePendingValue() && mayReplaceSet(bench_));
        if (mayClose && !ending_)
            dropRecovery(bench_);
        closing_ = closing_ && mayClose;
        event->setAccepted(mayClose);
        return;
    }
    if (transferring_ && !closing_) {
        askToStopTransfer();
        event->ignore();
        return;
    }
    // A write is not torn: what has been announced to the decoder comes to its end first. Who asks again
    // means it.
    if (writing_ && !closing_) {
        state_.stopRequested = true;
    } else {
        ending_ = true;
        bench_.prompts.endProgram();
    }
    closing_ = true;
    event->ignore();
}

void Hauptform::applyCaptions()
{
    setWindowTitle(title());
    menu_->applyCaptions(texts_);
    portBar_->applyCaptions(texts_);
    portBar_->showDecoder(state_);
    staleNotice_->applyCaptions(texts_);
    list_->setAccessibleName(qtText(texts_.caption(Caption::cvList)));
    list_->setEmptyHint(qtText(texts_.caption(Caption::emptyListHint)));
    panel_->applyCaptions(texts_);
    statusLine_->applyCaptions(texts_);
    showEditorReasons();
}

void Hauptform::showList()
{
    std::vector<FixedWidthList::Row> rows;
    rows.reserve(state_.set.list.size());
    for (const ListLine& line : state_.set.list)
        rows.push_back({qtText(line.text), qtText(line.name)});
    list_->updateRows(rows);
    list_->setEmptyHint(qtText(texts_.caption(Caption::emptyListHint)));
    setWindowTitle(title());
    setWindowModified(state_.set.unsavedChanges);
    staleNotice_->setVisible(state_.set.precedesUpdate);
    portBar_->showDecoder(state_);
    statusLine_->showVersion(qtText(state_.set.isOffline() ? offlineListVersion : programVersion));
    showCurrentRow();
    showDetails();
    showAvailability();
}

void Hauptform::showDetails()
{
    const CvSet& set = state_.set;
    const auto expert = set.expert.find(set.currentNumber);
    panel_->showCv(cvDetails(set.table, set.currentNumber),
                   expert == set.expert.end() ? Text() : expert->second.knowledge, texts_);
}

void Hauptform::showLineBusy(bool busy)
{
    portBar_->setLineBusy(busy);
    staleNotice_->setLineBusy(busy);
    showAvailability();
    if (busy) {
        statusLine_->blink();
        blinkTimer_.start();
    } else {
        stopQuestion_.withdraw();
        blinkTimer_.stop();
        statusLine_->stopBlinking();
    }
}

void Hauptform::showAvailability()
{
    const CvSet& set = state_.set;
    const int cv = set.currentNumber;
    const bool idle = !state_.lineBusy;
    const bool hasList = !set.isEmpty();
    const bool hasCurrentCv = hasList && cv >= 1 && cv <= CvTable::lastRow && set.table.value(cv).has_value();
    menu_->setAvailable(state_.lineBusy, hasList, hasCurrentCv);
    showEditorReasons();
    const bool writable = state_.link.typeCode != TypeCode::readOnlyReceiver;
    const auto whyNot = writable ? std::nullopt : std::optional(texts_.caption(Caption::receiverOnlyRead));
    for (const char* const item : {"mnu_write_single", "mnu_write_all", "mnu_reset"})
        menu_->setReason(item, whyNot);
    panel_->setAvailable(
        {.choosing = hasList,
         .changing = idle && hasCurrentCv,
         .takingBack = idle && isChanged(set, cv),
         .takingAllBack = idle && !changedCvs(set).empty(),
         .writingOne = idle && hasCurrentCv && writable,
         .writingChanged = idle && hasList && writable,
         .whyNoWriting = writable ? QString() : qtText(texts_.caption(Caption::receiverOnlyRead))});
}

void Hauptform::showEditorReasons()
{
    for (const MenuEntry& entry : menuTree()) {
        if (entry.editor)
            menu_->setReason(entry.name, whyNotOpen(*entry.editor, state_.set, texts_));
    }
    portBar_->setServoAddresses(!state_.lineBusy, whyNotOpen(Editor::servoAddresses, state_.set, texts_));
}

QString Hauptform::title() const
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
