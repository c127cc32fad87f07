#include "shell/memory_controller.h"

#include "firmware/forms/eeprom.h"
#include "firmware/forms/speicher.h"
#include "shell/editors_controller.h"
#include "shell/operation.h"

namespace karvo
{

MemoryController::MemoryController(Workbench& bench, QWidget& window, Operations& operations,
                                   EditorsController& editors)
    : bench_(bench), window_(window), operations_(operations), editors_(editors)
{
}

void MemoryController::showMemory()
{
    if (bench_.state.lineBusy || whyNoMemory(bench_.state))
        return;
    const Operation operation(operations_, OperationKind::other);
    Speicher(bench_, {editors_.whyNoReadSpeedSteps(), [this] { editors_.showReadSpeedSteps(); }}, &window_)
        .exec();
}

void MemoryController::showImage()
{
    if (bench_.state.lineBusy)
        return;
    const Operation operation(operations_, OperationKind::other);
    EEPROM(bench_, &window_).exec();
}

std::optional<Text> whyNoMemory(const ProgramState& state)
{
    return state.lastRead ? std::nullopt : std::optional(state.texts.message(Message::memoryNotRead));
}

} // namespace karvo
