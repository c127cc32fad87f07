#include "shell/presets_controller.h"

#include "program/path_text.h"
#include "shell/menu_tree.h"
#include "shell/write_controller.h"

#include <algorithm>

namespace karvo
{

namespace
{

const Preset& presetOf(const MenuEntry& item)
{
    const auto all = presets();
    return *std::find_if(all.begin(), all.end(),
                         [&](const Preset& preset) { return item.name.ends_with(preset.kind); });
}

} // namespace

PresetsController::PresetsController(Workbench& bench, WriteController& writing)
    : bench_(bench), texts_(bench.state.texts), writing_(writing)
{
}

void PresetsController::load(const MenuEntry& item)
{
    if (const auto changed = loadPreset(bench_, presetOf(item)))
        showLoaded(*changed, texts_.menuCaption(item.caption));
}

void PresetsController::save(const MenuEntry& item)
{
    savePreset(bench_, presetOf(item));
}

void PresetsController::writeBaseAndTop(const MenuEntry& item)
{
    if (const auto plan = planOfBaseAndTop(bench_, presetOf(item)))
        writing_.writeEdited(*plan, texts_.message(Message::baseAndTopWritten));
}

// A file under one of the names that the system knows is told by the kind of vehicle.
void PresetsController::loadOwn(const MenuEntry& item)
{
    const auto loaded = loadOwnPreset(bench_, texts_.menuCaption(item.caption));
    if (!loaded)
        return;
    const Preset* const known = presetOfDistanceFile(loaded->distances);
    const Text distances = known != nullptr ? menuCaption(texts_, "mnu_Eg_" + std::string(known->kind))
                                            : pathText(loaded->distances.filename());
    showLoaded(loaded->changed, pathText(loaded->steps.filename()) + u", " + distances);
}

void PresetsController::saveOwn(const MenuEntry& item)
{
    saveOwnPreset(bench_, texts_.menuCaption(item.caption));
}

void PresetsController::showLoaded(int changed, const Text& from)
{
    bench_.view.showStatus(texts_.caption(Caption::presetLoaded, {textFromNumber(changed), from}));
}

} // namespace karvo
