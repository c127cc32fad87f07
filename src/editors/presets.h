// Ready-made speed-step and distance tables: from their files into the set on the bench, and the other way
// round.
#pragma once

#include "editors/speed_step_file.h"
#include "workbench/workbench.h"
#include "workbench/write_plan.h"

#include <optional>
#include <span>
#include <string_view>

namespace karvo
{

// A kind of vehicle that the menu names, with its two files.
struct Preset {
    std::string_view kind;         // how the names of its menu items end: "Faller" in "mnu_Eg_Faller"
    std::string_view stepFile;     // in "FS_listen"
    std::string_view distanceFile; // in "ABS_listen"
};

std::span<const Preset> presets();

// A table with base and top speed that Pre_Fahrstufen offers.
struct BasedPreset {
    Caption caption;
    std::string_view file; // in "FS_listen"
};

std::span<const BasedPreset> basedPresets();

// The preset whose distance file has this name, with or without the "_" behind "CI"; nothing for another one.
const Preset* presetOfDistanceFile(const std::filesystem::path& name);

// How many CVs of the list have changed; nothing when nothing was loaded, after a message, or cancelled. What
// was merged before a fault stays. The lines of the list show the new values in brackets behind the old ones
// until the list is made anew.
std::optional<int> loadPreset(Workbench& bench, const Preset& preset);

struct LoadedFiles {
    std::filesystem::path steps;
    std::filesystem::path distances;
    int changed; // CVs of the list
};

// The same with two files that the person picks.
std::optional<LoadedFiles> loadOwnPreset(Workbench& bench, const Text& title);

// Whether the file would lie among the shipped ones, after a message that says so: nothing is saved there.
bool isAmongShipped(Workbench& bench, const UserFolder& folder, const std::filesystem::path& path);

// Saves the set's distance and speed-step values under the names of the preset, in the user's folders. Asks
// first where that replaces a file, or stands in front of a shipped one for the first time. False when not
// both were saved, after a message where that failed.
bool savePreset(Workbench& bench, const Preset& preset);

// The same under names that the person gives.
bool saveOwnPreset(Workbench& bench, const Text& title);

// CV2 as the preset's step 1 and CV5 as its step 28; nothing, after a message, when its file lacks them.
std::optional<WritePlan> planOfBaseAndTop(Workbench& bench, const Preset& preset);

// Nothing, after a message, when the file can not be read or does not fit.
std::optional<BasedSpeedTable> readBasedPreset(Workbench& bench, const BasedPreset& preset);

} // namespace karvo
