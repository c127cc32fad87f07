// The windows for servos in the main window.
#include "editors/forms/live_dialog.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"

#include <QAction>

namespace karvo
{

namespace
{

// Nothing when it was cancelled. The line is free again when the window is gone.
template <typename Window>
std::optional<WritePlan> setUp(Workbench& bench, QWidget* parent)
{
    Window window(bench, parent);
    return window.exec() == QDialog::Accepted ? std::optional(window.plan()) : std::nullopt;
}

} // namespace

void Hauptform::connectServos()
{
    const auto on = [this](std::string_view item, Editor editor, auto setUpWindow) {
        whenChosen(item, [this, editor, setUpWindow] {
            if (state_.lineBusy || !mayOpen(editor))
                return;
            if (const auto plan = setUpWindow(bench_, this))
                writeEdited(*plan, texts_.message(Message::servoWritten));
        });
    };
    on("mnu_servo_setup", Editor::bothServos, &setUp<Servo_Setup2>);
    on("mnu_servo1", Editor::firstServo, &setUp<Servo_Setup3>);
    on("mnu_servo2", Editor::secondServo, &setUp<Servo_Setup4>);
    on("mnu_RZeit_setup", Editor::servoTimes, &setUp<RZeit_Setup>);
}

} // namespace karvo
