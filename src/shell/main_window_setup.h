// What the main window is handed.
#pragma once

#include "language/language_code.h"
#include "link/forms/port_devices.h"
#include "program/archive.h"
#include "program/clock.h"
#include "program/downloader.h"
#include "shell/main_window_view.h"
#include "workbench/workbench.h"
#include "workbench/write_backup.h"

#include <functional>

namespace karvo
{

// What the window shows and asks of the platform. All that is referred to outlives the window.
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

} // namespace karvo
