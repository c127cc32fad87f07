#include "shell/controllers.h"

#include <QMainWindow>

namespace karvo
{

Controllers::Controllers(const MainWindowSetup& setup, const MainWidgets& in)
    : sheets(loadSheets(setup.bench.files, setup.bench.state.programFolder,
                        setup.bench.state.userFolders.sheets)),
      display(setup.bench.state, sheets, setup.view, in),
      entry(setup.bench, display, in.list, in.panel),
      operations(setup.bench, setup.view, in.window, entry, in.statusLine),
      reading(setup.bench, in.window, operations, entry, in.portBar, in.staleNotice),
      port(setup.bench, in.window, entry, in.portBar, setup.listPortDevices, setup.listNewPorts),
      writing(setup.bench, in.window, operations, entry, in.panel, setup.keepBackup),
      files(setup.bench, in.window, display, entry, reading, setup.clock),
      editors(setup.bench, in.window, operations, entry, writing, in.portBar),
      functions(setup.bench, in.window, sheets, in.menu, writing, editors),
      presets(setup.bench, writing),
      firmware(setup.bench, in.window, display, operations, setup.clock),
      memory(setup.bench, in.window, operations, editors),
      downloads(setup.bench, in.window, operations, setup.archive, setup.downloader),
      search(setup.bench, in.window, entry),
      language(setup.bench, in.menu, display, setup.useQtTexts),
      help(setup.bench.state, setup.bench.prompts, in.window)
{
}

} // namespace karvo
