#include "shell/presets_controller.h"

#include "program/path_text.h"
#include "shell/menu_tree.h"
#include "shell/write_controller.h"

#include <algorithm>

namespace karvo
{

namespace
{

// Nothing for an item whose name ends with no kind.
const Preset* presetOf(const MenuEntry& item)
{
    const auto all = presets();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Preset& preset) { return item.name.ends_with(preset.kind); });
    return found == all.end() ? nullptr : &*found;
}

} // namespace

PresetsController::PresetsController(Workbench& bench, WriteController& writing)
    : bench_(bench), texts_(bench.state.texts), writing_(writing)
{
}

void PresetsController::load(const MenuEntry& item)
{
    const Preset* const preset = presetOf(item);
    if (const auto changed = preset != nullptr ? loadPreset(bench_, *preset) : std::nullopt)
        showLoaded(*changed, texts_.menuCaption(item.caption));
}

void PresetsController::save(const MenuEntry& item)
{
    if (const Preset* const preset = presetOf(item))
        savePreset(bench_, *preset);
}

void PresetsController::writeBaseAndTop(const MenuEntry& item)
{
    const Preset* const preset = presetOf(item);
    if (const auto plan = preset != nullptr ? planOfBaseAndTop(bench_, *preset) : std::nullopt)
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
