// The main window: the program's hub.
#pragma once

#include "cvdata/list_search.h"
#include "editors/editor_gate.h"
#include "firmware/forms/stop_question.h"
#include "link/forms/port_devices.h"
#include "program/archive.h"
#include "program/clock.h"
#include "program/downloader.h"
#include "shell/main_window_view.h"
#include "workbench/full_read.h"
#include "workbench/workbench.h"
#include "workbench/write_backup.h"
#include "workbench/write_plan.h"
#include "workbench/write_preview.h"
#include "workbench/write_report.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <optional>
#include <string_view>

class QSplitter;

namespace karvo
{

class CvPanel;
class FixedWidthList;
class MainMenu;
class PortBar;
struct Preset;
class StaleNotice;
class StatusLine;
struct UnzipRequest;

// What the window shows and asks of the platform.
struct MainWindowSetup {
    Workbench& bench;
    MainWindowView& view; // the same as the workbench's
    ListPortDevices listPortDevices;
    ListNewPorts listNewPorts = {};
    const Clock& clock;
    Archive& archive;
    Downloader& downloader;
    KeepBackup keepBackup; // keeps what a vehicle held before the first write to it
    bool simulatedInterface = false;
    std::function<void(LanguageCode)> useQtTexts = {}; // Qt's own words follow the language
};

// A language is loaded before the window is made.
class Hauptform : public QMainWindow
{
    Q_OBJECT

public:
    explicit Hauptform(const MainWindowSetup& setup);

    // Starts a full read as soon as the current event has been handled.
    void readSoon() { readTimer_.start(); }

protected:
    // Asks first when changes are unsaved, and whether to stop a transfer of firmware. During an operation
    // the wait ends first, and the window closes once the operation has unwound.
    void closeEvent(QCloseEvent* event) override;

private:
    // hauptform_layout.cpp
    void buildWindow();
    void buildTimers();
    void restorePlacement();
    void savePlacement();
    void connectView(MainWindowView& view);
    void connectControls();
    void connectMenu();

    // hauptform.cpp
    void applyCaptions();
    void showList();
    void showDetails();
    void showLineBusy(bool busy);
    void showAvailability();
    void showEditorReasons();
    QString title() const;

    // hauptform_actions.cpp
    void read(ReadStarter starter);
    void choosePortNumber(int number);
    void findPorts();
    void clear();
    void showOffline(std::string_view menuItem);
    void showStandard();
    void showWithoutDecoder();
    void changeLanguage(LanguageCode code);
    void askCvNumber();
    void askWord();
    void findNext();
    void searchWord(std::optional<ListHit> after);
    std::optional<ListHit> chosenPlace() const;
    void showVersion();
    void showAbout();
    void showDecoderInfo();
    void showModuleHelp();
    void showHelp();

    // hauptform_files.cpp
    void connectFiles();
    void openSavedList();
    void save(bool (*saving)(Workbench&, const Text&), std::string_view item);

    // hauptform_editors.cpp
    void connectEditors();
    bool mayOpen(Editor editor);
    void editAddresses();
    void editServoAddresses();
    void editBraking(std::string_view preset);
    void editSpeedSteps();
    void connectPresets();
    void loadPresetOf(const Preset& preset);
    void loadOwn();
    void showLoaded(int changed, const Text& from);
    void savePresetOf(const Preset& preset);
    void saveOwn();
    void writeBaseAndTop(const Preset& preset);
    bool writeEdited(const WritePlan& plan, const Text& done);

    // hauptform_servos.cpp
    void connectServos();

    // hauptform_entry.cpp
    void connectEntry();
    // What a menu item does, once what is typed has been settled.
    void whenChosen(std::string_view item, std::function<void()> act);
    void whenChosen(std::string_view item, void (Hauptform::*act)());
    // Takes what is typed in the fields and not taken yet. To be called before anything acts, which must not
    // go on when it is false: a message has said why, and the keyboard is in the field.
    bool takePendingValue();
    bool settleQuietly();
    void refuseLeftEntry();
    void chooseRow(int row);
    bool goToCv(int number);
    void goTo(const ListHit& place);
    void showCurrentRow();
    void chooseBit(int weight, bool on);
    void stepValue(int by);
    void takeBackCurrent();
    void takeBackAll();

    // hauptform_writing.cpp
    void connectWriting();
    void writeCurrent();
    void writeSeriesOfCurrent();
    void writeChangedCvs();
    void writeAllCvs();
    void reset();
    void operate(const std::function<void()>& write);
    void writeMany(const std::function<WriteReport(const std::vector<int>&)>& write);
    ConfirmPlan preview();
    bool showReport(const WriteReport& report);
    void chooseNotice(bool wanted);

    // hauptform_firmware.cpp
    void connectFirmware();
    void upgrade();
    void updateFirmware();
    void askToStopTransfer();

    // hauptform_download.cpp
    void connectDownload();
    void downloadArchive();
    void unpackArchive();
    void unpackAfter(const std::optional<UnzipRequest>& request);

    Workbench bench_;
    ProgramState& state_;
    const LanguageTables& texts_;
    ListPortDevices listPortDevices_;
    ListNewPorts listNewPorts_;
    std::function<void(LanguageCode)> useQtTexts_;
    MainMenu* menu_;
    PortBar* portBar_;
    StaleNotice* staleNotice_;
    FixedWidthList* list_;
    CvPanel* panel_;
    StatusLine* statusLine_;
    QSplitter* splitter_;
    QTimer blinkTimer_;    // "Timer2"
    QTimer readTimer_;     // "Timer3": the deferred read
    QTimer sequenceTimer_; // "Timer4": the deferred write of the series CV167 to CV171
    QTimer entryTimer_;    // a field was left with what can not be taken: it is refused with the next event
    Text word_;            // last searched
    const Clock& clock_;
    Archive& archive_;
    Downloader& downloader_;
    KeepBackup keepBackup_;
    StopQuestion stopQuestion_;
    bool settling_ = false;     // what was typed is being settled: a box may be open
    bool writing_ = false;      // a write is under way
    bool transferring_ = false; // a transfer of firmware is under way, or its window still open
    bool closing_ = false;      // to be closed as soon as the operation under way has ended
    bool ending_ = false;       // without a question: what is unsaved is offered at the next start
};

// What the program calls itself, and what it calls itself over an offline list.
inline constexpr TextView programVersion = u"V01_23";
inline constexpr TextView offlineListVersion = u"V01_22";

} // namespace karvo
