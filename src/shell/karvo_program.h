// The running program: the pieces of the platform, what they work on, and the window.
#pragma once

#include "platform/port_map.h"
#include "platform/qt_clock.h"
#include "platform/qt_downloader.h"
#include "platform/qt_files.h"
#include "platform/qt_settings.h"
#include "platform/qt_wait.h"
#include "platform/system_stay_awake.h"
#include "platform/zip_archive.h"
#include "shell/hauptform.h"
#include "shell/recovery_slot.h"
#include "shell/start_up.h"
#include "simulator/decoder.h"
#include "ui/qt_texts.h"
#include "ui/window_places.h"
#include "ui/window_prompts.h"

#include <memory>
#include <optional>
#include <vector>

namespace karvo
{

struct ProgramSetup {
    std::filesystem::path programFolder;
    std::vector<PortMapping> mappings;
    std::filesystem::path recoveryFolder;  // where unsaved changes are kept; empty: they are not
    QString settingsFile;                  // where settings are stored; empty: in the user's own
    std::optional<LanguageCode> language;  // asked for; is stored
    std::optional<sim::Decoder> simulated; // works with a simulated interface instead of a real line
};

class KarvoProgram
{
public:
    explicit KarvoProgram(const ProgramSetup& setup);
    ~KarvoProgram();

    // Starts up and shows the window; false when the program ends instead.
    bool start();

    Hauptform& window() { return *window_; }

private:
    SerialPort& makePort(const ProgramSetup& setup);
    void findFolders();
    void clearLeftovers();
    StartChoices startChoices() const;
    std::vector<PortDevice> portDevices() const;
    std::vector<NewPortDevice> newPorts() const;

    QObject platform_; // owns the line and the wait until the window takes them over
    ProgramState state_;
    QtFiles files_;
    QtSettings settings_;
    WindowPlaces places_{settings_};
    QtClock clock_;
    PortMap portMap_;
    ZipArchive archive_;
    QtWait* wait_;
    QtDownloader downloader_;
    QObject* line_ = nullptr;
    SerialPort& port_;
    WindowPrompts prompts_;
    MainWindowView view_;
    SystemStayAwake stayAwake_;
    Workbench bench_;
    QtTexts qtTexts_;
    std::optional<LanguageCode> language_;
    std::filesystem::path recoveryFolder_;
    bool simulated_;
    std::unique_ptr<RecoverySlot> recovery_;
    std::unique_ptr<Hauptform> window_;
};

} // namespace karvo
