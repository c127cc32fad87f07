#include "shell/karvo_program.h"

#include "platform/qt_locale_info.h"
#include "platform/qt_serial_port.h"
#include "platform/simulated_port.h"
#include "platform/text_conversion.h"
#include "shell/start_up.h"
#include "workbench/list_files.h"
#include "workbench/recovery.h"

#include <QStandardPaths>

namespace karvo
{

namespace
{

std::filesystem::path driveC()
{
#ifdef Q_OS_WIN
    return "C:\\";
#else
    return toPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)) / "Karvo" / "C";
#endif
}

} // namespace

KarvoProgram::KarvoProgram(const ProgramSetup& setup)
    : portMap_(settings_, setup.mappings),
      wait_(new QtWait(&platform_)),
      downloader_(*wait_),
      port_(makePort(setup)),
      prompts_(state_.texts, [this] { wait_->endProgram(); }),
      bench_{state_, port_, *wait_, prompts_, view_, files_, settings_, &stayAwake_},
      simulated_(setup.simulated.has_value())
{
    state_.programFolder = setup.programFolder;
    findFolders(setup.recoveryFolder);
    port_.setNotice([this] { wait_->wake(); });
}

KarvoProgram::~KarvoProgram() = default;

SerialPort& KarvoProgram::makePort(const ProgramSetup& setup)
{
    if (!setup.simulated) {
        auto* const port = new QtSerialPort(portMap_, &platform_);
        line_ = port;
        return *port;
    }
    sim::Simulator simulator(*setup.simulated, sim::Pace::line, sim::Fault::none);
    auto* const port = new SimulatedPort(
        std::move(simulator), [this] { return state_.link.portNumber; }, &platform_);
    line_ = port;
    return *port;
}

bool KarvoProgram::start()
{
    if (!startUp(bench_, QtLocaleInfo()))
        return false;
    window_ = std::make_unique<Hauptform>(MainWindowSetup{
        .bench = bench_,
        .view = view_,
        .listPortDevices = [this] { return portDevices(); },
        .clock = clock_,
        .archive = archive_,
        .downloader = downloader_,
        .keepBackup =
            [this](const CvSet& set) { return keepBackup(files_, clock_, state_.userFolders, set); },
        .simulatedInterface = simulated_});
    // Found by their names among the window's own.
    line_->setParent(window_.get());
    wait_->setParent(window_.get());
    prompts_.setParentWindow(window_.get());
    window_->show();
    offerRecovery(bench_);
    return true;
}

void KarvoProgram::findFolders(const std::filesystem::path& recoveryFolder)
{
    const auto documents = toPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    state_.userFolders = findUserFolders(files_, state_.programFolder, documents);
    state_.driveC = driveC();
    if (recoveryFolder.empty())
        return;
    recovery_ = RecoverySlot::take(recoveryFolder);
    if (recovery_)
        state_.recovery.file = recovery_->file();
}

std::vector<PortDevice> KarvoProgram::portDevices() const
{
    std::vector<PortDevice> devices;
    for (PortDescription& port : portMap_.describePorts())
        devices.push_back({std::move(port.device), std::move(port.description)});
    return devices;
}

} // namespace karvo
