#include "shell/firmware_controller.h"

#include "firmware/forms/firmware_ablauf.h"
#include "firmware/forms/upgrade.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"
#include "shell/bench_display.h"
#include "shell/operation.h"
#include "ui/captions.h"

#include <QDir>

namespace karvo
{

namespace
{

// The fixed folder on drive C where there is one, else the user's own.
std::filesystem::path startFolder(Files& files, const std::filesystem::path& driveC,
                                  std::initializer_list<const char*> fixed)
{
    auto folder = folderBelow(files, driveC, fixed);
    return files.exists(folder) ? folder : toPath(QDir::homePath());
}

} // namespace

FirmwareController::FirmwareController(Workbench& bench, QWidget& window, BenchDisplay& display,
                                       Operations& operations, const Clock& clock)
    : bench_(bench), window_(window), display_(display), operations_(operations), clock_(clock)
{
}

void FirmwareController::upgrade()
{
    if (bench_.state.lineBusy)
        return;
    const auto path =
        chooseImage(bench_.prompts, bench_.state.texts, startFolder(bench_.files, bench_.state.driveC, {}));
    const auto image = path ? readHexFile(bench_, *path) : std::nullopt;
    if (!image)
        return;
    const Operation operation(operations_, OperationKind::transfer);
    Upgrade window(bench_, *image, &window_);
    connect(&window, &Upgrade::transferEnded, this, [this, &window] {
        if (operations_.isClosing())
            window.close();
    });
    window.exec();
}

void FirmwareController::update()
{
    const Operation operation(operations_, OperationKind::other);
    std::optional<Operation> transfer; // once there is a file to send
    Firmware_Ablauf observer(bench_, &window_);
    const auto choose = [this] {
        return chooseUpdate(bench_.prompts, bench_.state.texts,
                            startFolder(bench_.files, bench_.state.driveC,
                                        {"Programme", "Atmel", "AVR Tools", "AvrStudio4", "Meine Projekte"}));
    };
    const auto showFile = [this, &transfer](const std::filesystem::path& path) {
        transfer.emplace(operations_, OperationKind::transfer);
        display_.showTitle(QStringLiteral(" [ %1 ]").arg(qtText(pathText(path.filename()))));
    };
    updateThroughInterface(bench_, {choose, showFile, clock_, observer});
}

} // namespace karvo
