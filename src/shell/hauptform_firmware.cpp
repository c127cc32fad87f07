// Renewing a decoder's firmware from the main window.
#include "firmware/forms/firmware_ablauf.h"
#include "firmware/forms/upgrade.h"
#include "platform/qt_clock.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "shell/stale_notice.h"
#include "ui/captions.h"

#include <QAction>
#include <QApplication>
#include <QDir>

namespace karvo
{

namespace
{

// The fixed folder on drive C where there is one, else the user's own.
std::filesystem::path startFolder(Workbench& bench, std::initializer_list<const char*> fixed)
{
    auto folder = folderBelow(bench.files, bench.state.driveC, fixed);
    return bench.files.exists(folder) ? folder : toPath(QDir::homePath());
}

} // namespace

void Hauptform::connectFirmware()
{
    whenChosen("mnu_kv07_Firmware", &Hauptform::upgrade);
    whenChosen("mnu_firmware", &Hauptform::updateFirmware);
    connect(staleNotice_, &StaleNotice::readWanted, this, [this] { read(ReadStarter::other); });
    connect(&stopQuestion_, &StopQuestion::agreed, this, [this] { closing_ = true; });
}

void Hauptform::upgrade()
{
    if (state_.lineBusy)
        return;
    const auto path = chooseImage(bench_, startFolder(bench_, {}));
    if (!path)
        return;
    if (const auto image = readHexFile(bench_, *path)) {
        transferring_ = true;
        Upgrade window(bench_, *image, this);
        connect(&window, &Upgrade::transferEnded, this, [this, &window] {
            if (closing_)
                window.close();
        });
        window.exec();
        transferring_ = false;
    }
    if (closing_)
        close();
}

void Hauptform::updateFirmware()
{
    const QtClock clock;
    Firmware_Ablauf observer(bench_, this);
    const auto choose = [this] {
        return chooseUpdate(
            bench_, startFolder(bench_, {"Programme", "Atmel", "AVR Tools", "AvrStudio4", "Meine Projekte"}));
    };
    const auto showFile = [this](const std::filesystem::path& path) {
        transferring_ = true;
        setWindowTitle(title() + QStringLiteral(" [ %1 ]").arg(qtText(pathText(path.filename()))));
    };
    updateThroughInterface(bench_, {choose, showFile, clock, observer});
    transferring_ = false;
    if (closing_)
        close();
}

void Hauptform::askToStopTransfer()
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (state_.stopRequested)
        closing_ = true; // it has been agreed to in the window of the transfer
    else
        stopQuestion_.ask(dialog != nullptr ? dialog : this);
}

} // namespace karvo
