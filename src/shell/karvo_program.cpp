#include "shell/karvo_program.h"

#include "platform/qt_locale_info.h"
#include "platform/simulated_port.h"
#include "platform/system_serial_port.h"
#include "platform/temporary_files.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"
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
    : settings_(setup.settingsFile),
      portMap_(settings_, setup.mappings),
      wait_(new QtWait(&platform_)),
      downloader_(*wait_),
      port_(makePort(setup)),
      prompts_(state_.texts, [this] { wait_->endProgram(); }),
      bench_{state_, port_, *wait_, prompts_, view_, files_, settings_, &stayAwake_},
      qtTexts_(setup.programFolder),
      language_(setup.language),
      recoveryFolder_(setup.recoveryFolder),
      simulated_(setup.simulated.has_value())
{
    state_.programFolder = setup.programFolder;
    findFolders();
    clearLeftovers();
    port_.setNotice([this] { wait_->wake(); });
}

KarvoProgram::~KarvoProgram() = default;

SerialPort& KarvoProgram::makePort(const ProgramSetup& setup)
{
    if (!setup.simulated) {
        auto* const port = new SystemSerialPort(portMap_, &platform_);
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
    if (!startUp(bench_, QtLocaleInfo(), startChoices()))
        return false;
    qtTexts_.use(state_.language);
    window_ = std::make_unique<Hauptform>(
        MainWindowSetup{.bench = bench_,
                        .view = view_,
                        .listPortDevices = [this] { return portDevices(); },
                        .listNewPorts = [this] { return newPorts(); },
                        .clock = clock_,
                        .archive = archive_,
                        .downloader = downloader_,
                        .keepBackup =
                            [this](const CvSet& set) {
                                return keepBackup(files_, state_.texts, clock_, state_.userFolders, set);
                            },
                        .simulatedInterface = simulated_,
                        .useQtTexts = [this](LanguageCode code) { qtTexts_.use(code); }});
    // Found by their names among the window's own.
    line_->setParent(window_.get());
    wait_->setParent(window_.get());
    prompts_.setParentWindow(window_.get());
    window_->show();
    offerRecovery(bench_);
    if (!recoveryFolder_.empty() && !recovery_) {
        prompts_.message(state_.texts.message(Message::recoveryUnavailable, {pathText(recoveryFolder_)}),
                         PromptIcon::warning);
    }
    return true;
}

void KarvoProgram::findFolders()
{
    const auto documents = toPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    state_.userFolders = findUserFolders(files_, state_.programFolder, documents);
    state_.driveC = driveC();
    if (recoveryFolder_.empty())
        return;
    recovery_ = RecoverySlot::take(recoveryFolder_);
    if (recovery_)
        state_.recovery.file = recovery_->file();
}

std::vector<PortDevice> KarvoProgram::portDevices() const
{
    std::vector<PortDevice> devices;
    for (PortDescription& port : portMap_.describePorts())
        devices.push_back({std::move(port.device), std::move(port.description), !port.isPresent});
    if (simulated_)
        devices[static_cast<std::size_t>(state_.link.portNumber) - 1].isAbsent = false;
    return devices;
}

std::vector<NewPortDevice> KarvoProgram::newPorts() const
{
    std::vector<NewPortDevice> ports;
    for (NewPort& port : portMap_.newPorts())
        ports.push_back({port.number, {std::move(port.device), std::move(port.description)}});
    return ports;
}

StartChoices KarvoProgram::startChoices() const
{
    StartChoices choices{language_, {}};
    if (simulated_)
        return choices;
    const auto ports = portMap_.describePorts();
    for (std::size_t i = 0; i < ports.size(); ++i) {
        if (ports[i].isPresent)
            choices.presentPorts.push_back(static_cast<int>(i) + 1);
    }
    return choices;
}

// What programs that were killed left where this one saves.
void KarvoProgram::clearLeftovers()
{
    const UserFolders& folders = state_.userFolders;
    for (const auto& folder : {folders.cvLists.own, folders.speedSteps.own, folders.distances.own,
                               recoveryFolder_, folderBelow(files_, state_.driveC, {"TEMP"})}) {
        if (!folder.empty())
            karvo::clearLeftovers(folder);
    }
}

} // namespace karvo
