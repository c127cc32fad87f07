// What the main window does: one controller for each concern, each with what its menu items call.
#pragma once

#include "shell/bench_display.h"
#include "shell/download_controller.h"
#include "shell/editors_controller.h"
#include "shell/entry_controller.h"
#include "shell/files_controller.h"
#include "shell/firmware_controller.h"
#include "shell/help_controller.h"
#include "shell/language_controller.h"
#include "shell/main_widgets.h"
#include "shell/main_window_setup.h"
#include "shell/memory_controller.h"
#include "shell/operation.h"
#include "shell/port_controller.h"
#include "shell/presets_controller.h"
#include "shell/read_controller.h"
#include "shell/search_controller.h"
#include "shell/sheets_controller.h"
#include "shell/write_controller.h"

#include <tuple>

namespace karvo
{

struct Controllers {
    Controllers(const MainWindowSetup& setup, const MainWidgets& widgets);

    SheetStore sheets;
    BenchDisplay display;
    EntryController entry;
    Operations operations;
    ReadController reading;
    PortController port;
    WriteController writing;
    FilesController files;
    EditorsController editors;
    SheetsController functions;
    PresetsController presets;
    FirmwareController firmware;
    MemoryController memory;
    DownloadController downloads;
    SearchController search;
    LanguageController language;
    HelpController help;

    // Those that the menu knows.
    template <typename Controller>
    Controller& of()
    {
        return std::get<Controller&>(std::tie(reading, port, writing, files, editors, functions, presets,
                                              firmware, memory, downloads, search, language, help));
    }
};

} // namespace karvo
