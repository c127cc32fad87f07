#include "shell/editors_controller.h"

#include "editors/forms/bremsen.h"
#include "editors/forms/dcc_adresse.h"
#include "editors/forms/fahrstufen.h"
#include "editors/forms/live_dialog.h"
#include "editors/forms/servo_addresse.h"
#include "shell/entry_controller.h"
#include "shell/operation.h"
#include "shell/port_bar.h"
#include "shell/write_controller.h"

#include <QApplication>
#include <QScopedValueRollback>

namespace karvo
{

namespace
{

// Nothing when it was cancelled. The line is free again when the window is gone.
template <typename Window>
std::optional<WritePlan> planOf(Workbench& bench, QWidget& parent)
{
    Window window(bench, &parent);
    return window.exec() == QDialog::Accepted ? std::optional(window.plan()) : std::nullopt;
}

} // namespace

EditorsController::EditorsController(Workbench& bench, QWidget& window, Operations& operations,
                                     EntryController& entry, WriteController& writing, PortBar& portBar)
    : bench_(bench),
      texts_(bench.state.texts),
      window_(window),
      operations_(operations),
      entry_(entry),
      writing_(writing)
{
    connect(&portBar, &PortBar::servoAddressesWanted, this, &EditorsController::editServoAddresses);
}

void EditorsController::editAddresses()
{
    if (!mayOpen(Editor::addresses))
        return;
    DCC_Adresse editor(bench_.state.set, bench_.prompts, texts_, &window_);
    while (editor.exec() == QDialog::Accepted &&
           !writing_.writeEdited(editor.plan(), texts_.message(Message::addressesWritten))) {
    }
}

void EditorsController::editServoAddresses()
{
    if (!mayOpen(Editor::servoAddresses))
        return;
    Servo_Addresse editor(bench_.state.set, bench_.prompts, texts_, &window_);
    while (editor.exec() == QDialog::Accepted &&
           !writing_.writeEdited(editor.plan(), servoAddressesWritten(editor.plan(), texts_))) {
    }
}

void EditorsController::editSpeedSteps()
{
    if (!mayOpen(Editor::speedTable))
        return;
    const Operation operation(operations_, OperationKind::other);
    openSpeedSteps();
}

void EditorsController::openSpeedSteps()
{
    QWidget* const owner = QApplication::activeModalWidget();
    QWidget* const parent = owner != nullptr ? owner : &window_;
    if (bench_.state.set.profile.generation == Generation::f5)
        FahrstufenF5(bench_, parent).exec();
    else
        Fahrstufen(bench_, parent).exec();
}

void EditorsController::showReadSpeedSteps()
{
    const QScopedValueRollback view(bench_.state.speedStepViews, bench_.state.speedStepViews + 1);
    openSpeedSteps();
}

// The list tells which steps its decoder has, and how fast they can be.
std::optional<Text> EditorsController::whyNoReadSpeedSteps() const
{
    const auto& read = bench_.state.lastRead;
    const CvSet& set = bench_.state.set;
    if (!read)
        return texts_.message(Message::memoryNotRead);
    const bool isOfRead = set.profile.model == read->profile.model;
    return set.isEmpty() || isOfRead ? whyNotOpen(Editor::speedTable, set, texts_)
                                     : std::optional(texts_.message(Message::stepsOfOtherVehicle));
}

void EditorsController::editBraking()
{
    editBrakingOf("");
}

void EditorsController::editBrakingOf(const char* preset)
{
    if (!mayOpen(Editor::braking))
        return;
    Bremsen editor(bench_, preset, &window_);
    while (editor.exec() == QDialog::Accepted &&
           !writing_.writeEdited(editor.plan(), texts_.message(Message::distancesWritten))) {
    }
}

void EditorsController::setUpBothServos()
{
    setUp<Servo_Setup2>(Editor::bothServos);
}

void EditorsController::setUpFirstServo()
{
    setUp<Servo_Setup3>(Editor::firstServo);
}

void EditorsController::setUpSecondServo()
{
    setUp<Servo_Setup4>(Editor::secondServo);
}

void EditorsController::setUpServoTimes()
{
    setUp<RZeit_Setup>(Editor::servoTimes);
}

// An item that is disabled can not be chosen; what opens without one asks here too.
bool EditorsController::mayOpen(Editor editor)
{
    if (!entry_.takePending())
        return false;
    const auto reason = whyNotOpen(editor, bench_.state.set, texts_);
    if (reason)
        bench_.prompts.message(*reason, PromptIcon::information);
    return !reason;
}

template <typename Window>
void EditorsController::setUp(Editor editor)
{
    if (bench_.state.lineBusy || !mayOpen(editor))
        return;
    const Operation operation(operations_, OperationKind::other);
    if (const auto plan = planOf<Window>(bench_, window_))
        writing_.writeEdited(*plan, texts_.message(Message::servoWritten));
}

} // namespace karvo
