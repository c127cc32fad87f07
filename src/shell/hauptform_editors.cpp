// The editors of vehicle functions in the main window.
#include "editors/forms/bremsen.h"
#include "editors/forms/dcc_adresse.h"
#include "editors/forms/fahrstufen.h"
#include "editors/forms/servo_addresse.h"
#include "editors/presets.h"
#include "program/path_text.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "workbench/write_many.h"

#include <QAction>

#include <algorithm>

namespace karvo
{

void Hauptform::connectEditors()
{
    const auto on = [this](std::string_view item, auto act) { whenChosen(item, act); };
    on("mnu_dcc_adresse", &Hauptform::editAddresses);
    on("mnu_bremsen", [this] { editBraking({}); });
    on("mnu_Faller", [this] { editBraking("Faller.bcr"); });
    on("mnu_CI46", [this] { editBraking("CI_46.bcr"); });
    on("mnu_CI26", [this] { editBraking("CI_26.bcr"); });
    on("mnu_fahrstufen", &Hauptform::editSpeedSteps);
    on("mnu_Eg_EigenFz", &Hauptform::loadOwn);
    on("mnu_Sg_EigenFz", &Hauptform::saveOwn);
    connectPresets();
}

// Each kind of vehicle has three items.
void Hauptform::connectPresets()
{
    for (const Preset& preset : presets()) {
        const auto on = [&](const char* start, void (Hauptform::*act)(const Preset&)) {
            whenChosen(start + std::string(preset.kind), [this, act, &preset] { (this->*act)(preset); });
        };
        on("mnu_Eg_", &Hauptform::loadPresetOf);
        on("mnu_Sg_", &Hauptform::savePresetOf);
        on("mnu_FS_", &Hauptform::writeBaseAndTop);
    }
}

// An item that is disabled can not be chosen; what opens without one asks here too.
bool Hauptform::mayOpen(Editor editor)
{
    if (!takePendingValue())
        return false;
    const auto reason = whyNotOpen(editor, state_.set, texts_);
    if (reason)
        bench_.prompts.message(*reason, PromptIcon::information);
    return !reason;
}

void Hauptform::editAddresses()
{
    if (!mayOpen(Editor::addresses))
        return;
    DCC_Adresse editor(state_.set, bench_.prompts, texts_, this);
    while (editor.exec() == QDialog::Accepted &&
           !writeEdited(editor.plan(), texts_.message(Message::addressesWritten))) {
    }
}

void Hauptform::editServoAddresses()
{
    if (!mayOpen(Editor::servoAddresses))
        return;
    Servo_Addresse editor(state_.set, bench_.prompts, texts_, this);
    while (editor.exec() == QDialog::Accepted &&
           !writeEdited(editor.plan(), servoAddressesWritten(editor.plan(), texts_))) {
    }
}

void Hauptform::editBraking(std::string_view preset)
{
    if (!mayOpen(Editor::braking))
        return;
    Bremsen editor(bench_, preset, this);
    while (editor.exec() == QDialog::Accepted &&
           !writeEdited(editor.plan(), texts_.message(Message::distancesWritten))) {
    }
}

void Hauptform::editSpeedSteps()
{
    if (!mayOpen(Editor::speedTable))
        return;
    if (state_.set.profile.generation == Generation::f5)
        FahrstufenF5(bench_, this).exec();
    else
        Fahrstufen(bench_, this).exec();
}

void Hauptform::loadPresetOf(const Preset& preset)
{
    if (const auto changed = loadPreset(bench_, preset))
        showLoaded(*changed, menu_->captionOf(texts_, "mnu_Eg_" + std::string(preset.kind)));
}

// A file under one of the names that the system knows is told by the kind of vehicle.
void Hauptform::loadOwn()
{
    const auto loaded = loadOwnPreset(bench_, menu_->captionOf(texts_, "mnu_Eg_EigenFz"));
    if (!loaded)
        return;
    const Preset* const known = presetOfDistanceFile(loaded->distances);
    const Text distances = known != nullptr ? menu_->captionOf(texts_, "mnu_Eg_" + std::string(known->kind))
                                            : pathText(loaded->distances.filename());
    showLoaded(loaded->changed, pathText(loaded->steps.filename()) + u", " + distances);
}

void Hauptform::showLoaded(int changed, const Text& from)
{
    bench_.view.showStatus(texts_.caption(Caption::presetLoaded, {textFromNumber(changed), from}));
}

void Hauptform::savePresetOf(const Preset& preset)
{
    savePreset(bench_, preset);
}

void Hauptform::saveOwn()
{
    saveOwnPreset(bench_, menu_->captionOf(texts_, "mnu_Sg_EigenFz"));
}

void Hauptform::writeBaseAndTop(const Preset& preset)
{
    if (const auto plan = planOfBaseAndTop(bench_, preset))
        writeEdited(*plan, texts_.message(Message::baseAndTopWritten));
}

// Success is claimed only when each CV was written; else the report tells what was and what was not. False
// when the line was taken, before the values stood in the list: they are in the editor alone, which opens
// again.
bool Hauptform::writeEdited(const WritePlan& plan, const Text& done)
{
    auto end = WriteManyEnd::busy;
    operate([&] {
        auto report = writeValues(bench_, plan, keepBackup_);
        end = report.end;
        if (end == WriteManyEnd::finished && report.isClean()) {
            bench_.prompts.message(done, PromptIcon::information);
            return;
        }
        while (showReport(report)) {
            report = writeValues(bench_, restOf(plan, report.rest()), keepBackup_);
            end = report.end;
        }
    });
    return end != WriteManyEnd::busy;
}

} // namespace karvo
