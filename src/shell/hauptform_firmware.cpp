// Renewing a decoder's firmware from the main window.
#include "firmware/forms/firmware_ablauf.h"
#include "firmware/forms/upgrade.h"
#include "platform/qt_clock.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "ui/captions.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace karvo
{

namespace
{

const auto proposedImage = QStringLiteral("KV07_29August2022_Alle_Versionen.hex");
const auto updateFolder = QStringLiteral("C:\\Programme\\Atmel\\AVR Tools\\AvrStudio4\\Meine Projekte");

// The fixed folder where there is one, else the user's own.
QString startFolder(const QString& fixed)
{
    return QFileInfo(fixed).isDir() ? fixed : QDir::homePath();
}

} // namespace

void Hauptform::connectFirmware()
{
    connect(menu_->action("mnu_kv07_Firmware"), &QAction::triggered, this, &Hauptform::upgrade);
    connect(menu_->action("mnu_firmware"), &QAction::triggered, this, &Hauptform::updateFirmware);
}

std::optional<std::filesystem::path> Hauptform::chooseFirmware(const QString& start, Caption kind,
                                                               const QString& pattern)
{
    const QString filter = qtText(texts_.caption(kind)) + QStringLiteral(" (%1)").arg(pattern);
    const QString name = QFileDialog::getOpenFileName(this, QString(), start, filter);
    return name.isEmpty() ? std::nullopt : std::optional(toPath(name));
}

void Hauptform::upgrade()
{
    if (state_.lineBusy)
        return;
    const auto path = chooseFirmware(QDir(startFolder(QStringLiteral("C:\\"))).filePath(proposedImage),
                                     Caption::hexFiles, QStringLiteral("*.hex *.HEX"));
    if (!path || *path == std::filesystem::path("*.kvr")) {
        bench_.prompts.message(texts_.message(Message::noFileChosen));
        return;
    }
    if (const auto image = readHexFile(bench_, *path))
        Upgrade(bench_, *image, this).exec();
    if (closing_)
        close();
}

void Hauptform::updateFirmware()
{
    const QtClock clock;
    Firmware_Ablauf observer(texts_, bench_.prompts, this);
    const auto choose = [this] {
        return chooseFirmware(startFolder(updateFolder), Caption::updateFiles, QStringLiteral("*.uhx *.UHX"));
    };
    const auto showFile = [this](const std::filesystem::path& path) {
        setWindowTitle(title() + QStringLiteral(" [ %1 ]").arg(qtText(pathText(path.filename()))));
    };
    updateThroughInterface(bench_, {choose, showFile, clock, observer});
    if (closing_)
        close();
}

} // namespace karvo
