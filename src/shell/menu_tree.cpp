#include "shell/menu_tree.h"

#include "cvdata/description_choice.h"
#include "language/text_numbers.h"

#include <algorithm>
#include <iterator>

namespace karvo
{

namespace
{

constexpr MenuEntry separator(int depth)
{
    return {depth, {}};
}

constexpr MenuEntry tree[] = {
    {0, "mnu_datei"},
    {1, "mnu_nothing"},
    {2, "mnu_open"},
    separator(2),
    {2, "mnu_kv07"},
    {2, "mnu_KV08"},
    {2, "mnu_KV06"},
    {2, "mnu_KV05"},
    {2, "mnu_KV04_neu"},
    {2, "mnu_KV04"},
    {2, "mnu_karvo_xt_list"},
    separator(2),
    {2, "mnu_VListe"},
    {3, "mnu_KV07_Bus"},
    {3, "mnu_KV07_FW"},
    {3, "mnu_KV08_Bus"},
    {3, "mnu_KV08_FW"},
    {3, "mnu_KV06_Bus"},
    {3, "mnu_KV06_FW"},
    {3, "mnu_KV05_Bus"},
    {3, "mnu_KV05_FW"},
    {3, "mnu_KV04_Bus_09"},
    {3, "mnu_KV04_FW_09"},
    {3, "mnu_KV04_Bus_08"},
    {3, "mnu_KV04_FW_08"},
    separator(1),
    {1, "mnu_save"},
    {1, "mnu_save_as"},
    separator(1),
    {1, "mnu_change_more_cv"},
    separator(1),
    {1, "mnu_exit"},
    {0, "mnu_CV"},
    {1, "mnu_read_all"},
    {1, "mnu_write_all"},
    {1, "mnu_write_single"},
    separator(1),
    {1, "mnu_fahrstufen"},
    {1, "mnu_standart"},
    separator(1),
    {1, "mnu_reset"},
    separator(1),
    {1, "mnu_FzCVdrucken"},
    separator(1),
    {1, "mnu_clear"},
    {0, "mnu_Receiver"},
    {1, "mnu_RCV_generell"},
    {1, "mnu_RCV_Servo"},
    {1, "mnu_RCV_weiche"},
    separator(1),
    {1, "mnu_servo_setup"},
    {1, "mnu_RZeit_setup"},
    separator(1),
    {1, "mnu_CV_clear"},
    separator(1),
    {1, "mnu_erkennen"},
    {2, "mnu_auswerten_G"},
    {2, "mnu_auswerten_F"},
    {2, "mnu_auswerten_GF"},
    {2, "mnu_auswerten_GPF"},
    {1, "mnu_sonder_fct"},
    separator(1),
    {1, "mnu_Pre_Licht"},
    {2, "mnu_Pre_Licht1"},
    {2, "mnu_Pre_Licht2"},
    {2, "mnu_Pre_Licht3"},
    {2, "mnu_Pre_Licht4"},
    {2, "mnu_Pre_Licht5"},
    {1, "mnu_Pre_Gattung"},
    {2, "mnu_Pre_Gattung1"},
    {2, "mnu_Pre_Gattung2"},
    {2, "mnu_Pre_Gattung3"},
    {1, "mnu_Pre_FzNummer"},
    {2, "mnu_Pre_Fahrzeug1"},
    {2, "mnu_Pre_Fahrzeug2"},
    {2, "mnu_Pre_Fahrzeug3"},
    separator(1),
    {1, "mnu_RCV_anzeigen"},
    {0, "mnu_fzg"},
    {1, "mnu_bus"},
    {1, "mnu_bus_clear"},
    separator(1),
    {1, "mnu_Feuerwehr_Einsatz"},
    {1, "mnu_feuerwehr"},
    {1, "mnu_feuerwehr_clear"},
    separator(1),
    {1, "mnu_bremsen"},
    {1, "mnu_Def_Fahrstufen"},
    {2, "mnu_FS_CI26_1"},
    {2, "mnu_FS_CI26_2"},
    {2, "mnu_FS_CI46_1"},
    {2, "mnu_FS_CI46_2"},
    {2, "mnu_FS_Faller"},
    {1, "mnu_Eigene_Fahrstufen"},
    {2, "menu_Eg_Load"},
    {3, "mnu_Eg_EigenFz"},
    {3, "mnu_Eg_CI26_1"},
    {3, "mnu_Eg_CI26_2"},
    {3, "mnu_Eg_CI46_1"},
    {3, "mnu_Eg_CI46_2"},
    {3, "mnu_Eg_Faller"},
    {2, "mnu_Eg_save"},
    {3, "mnu_Sg_EigenFz"},
    {3, "mnu_Sg_CI26_1"},
    {3, "mnu_Sg_CI26_2"},
    {3, "mnu_Sg_CI46_1"},
    {3, "mnu_Sg_CI46_2"},
    {3, "mnu_Sg_Faller"},
    separator(1),
    {1, "mnu_licht"},
    {2, "mnu_licht60"},
    {2, "mnu_blaulicht"},
    {1, "mnu_tsop"},
    {1, "mnu_dcc_adresse"},
    {1, "mnu_ABS"},
    {2, "mnu_CI46"},
    {2, "mnu_CI26"},
    {2, "mnu_Faller"},
    {1, "mnu_spur"},
    {1, "mnu_servo"},
    {2, "mnu_servo1"},
    {2, "mnu_servo2"},
    {0, "mnu_suchen"},
    {1, "mnu_com"},
    separator(1),
    {1, "mnu_index"},
    {1, "mnu_suchen_generell"},
    {0, "mnu_vergleichen"},
    {0, "mnu_firmware"},
    {0, "mnu_wartung"},
    {1, "mnu_wartung_save"},
    {1, "mnu_wartung_read"},
    separator(1),
    {1, "mnu_eeprom_show"},
    {1, "mnu_RAM"},
    separator(1),
    {1, "mnu_kv07_Firmware"},
    {0, "mnu_Sprache"},
    {1, "mnu_german"},
    {1, "mnu_dutch"},
    {1, "mnu_english"},
    {1, "mnu_spanisch"},
    {1, "mnu_franz"},
    {0, "mnu_upgrade"},
    {1, "mnu_unzip"},
    {1, "mnu_download"},
    {0, "mnu_help"},
    {1, "mnu_hilfe_XT"},
    {1, "mnu_cv_datei"},
    {1, "mnu_about"},
    {1, "mnu_Lorry"},
    {0, "mnu_version"},
};

struct AvailableItem {
    std::string_view name;
    Availability availability;
};

// What is built; the items of the offline lists come on top.
constexpr AvailableItem availableItems[] = {
    {"mnu_open", Availability::idle},
    {"mnu_save", Availability::withList},
    {"mnu_save_as", Availability::withList},
    {"mnu_change_more_cv", Availability::idle},
    {"mnu_exit", Availability::always},
    {"mnu_read_all", Availability::idle},
    {"mnu_write_all", Availability::withList},
    {"mnu_write_single", Availability::withCurrentCv},
    {"mnu_reset", Availability::idle},
    {"mnu_standart", Availability::withList},
    {"mnu_cv_datei", Availability::withList},
    {"mnu_hilfe_XT", Availability::idle},
    {"mnu_FzCVdrucken", Availability::withList},
    {"mnu_clear", Availability::idle},
    // Not only with a list, as its neighbours: without a port there would never be one.
    {"mnu_com", Availability::idle},
    {"mnu_index", Availability::withList},
    {"mnu_suchen_generell", Availability::withList},
    {"mnu_vergleichen", Availability::idle}, // two files need no list
    {"mnu_fahrstufen", Availability::withList},
    {"mnu_bremsen", Availability::withList},
    {"mnu_FS_CI26_1", Availability::withList},
    {"mnu_FS_CI26_2", Availability::withList},
    {"mnu_FS_CI46_1", Availability::withList},
    {"mnu_FS_CI46_2", Availability::withList},
    {"mnu_FS_Faller", Availability::withList},
    // Without a list they say what is missing.
    {"mnu_Eg_EigenFz", Availability::idle},
    {"mnu_Eg_CI26_1", Availability::idle},
    {"mnu_Eg_CI26_2", Availability::idle},
    {"mnu_Eg_CI46_1", Availability::idle},
    {"mnu_Eg_CI46_2", Availability::idle},
    {"mnu_Eg_Faller", Availability::idle},
    {"mnu_Sg_EigenFz", Availability::idle},
    {"mnu_Sg_CI26_1", Availability::idle},
    {"mnu_Sg_CI26_2", Availability::idle},
    {"mnu_Sg_CI46_1", Availability::idle},
    {"mnu_Sg_CI46_2", Availability::idle},
    {"mnu_Sg_Faller", Availability::idle},
    {"mnu_Faller", Availability::withList},
    {"mnu_CI46", Availability::withList},
    {"mnu_CI26", Availability::withList},
    {"mnu_dcc_adresse", Availability::withList},
    {"mnu_servo_setup", Availability::withList},
    {"mnu_servo1", Availability::withList},
    {"mnu_servo2", Availability::withList},
    {"mnu_RZeit_setup", Availability::withList},
    {"mnu_firmware", Availability::idle},
    {"mnu_kv07_Firmware", Availability::idle},
    {"mnu_unzip", Availability::idle},
    {"mnu_download", Availability::idle},
    {"mnu_german", Availability::idle},
    {"mnu_dutch", Availability::idle},
    {"mnu_english", Availability::idle},
    {"mnu_spanisch", Availability::idle},
    {"mnu_franz", Availability::idle},
    {"mnu_about", Availability::idle},
    {"mnu_version", Availability::idle},
};

constexpr EditorItem editors[] = {
    {"mnu_fahrstufen", Editor::speedTable},  {"mnu_bremsen", Editor::braking},
    {"mnu_Faller", Editor::braking},         {"mnu_CI46", Editor::braking},
    {"mnu_CI26", Editor::braking},           {"mnu_FS_CI26_1", Editor::baseAndTop},
    {"mnu_FS_CI26_2", Editor::baseAndTop},   {"mnu_FS_CI46_1", Editor::baseAndTop},
    {"mnu_FS_CI46_2", Editor::baseAndTop},   {"mnu_FS_Faller", Editor::baseAndTop},
    {"mnu_Eg_EigenFz", Editor::presets},     {"mnu_Eg_CI26_1", Editor::presets},
    {"mnu_Eg_CI26_2", Editor::presets},      {"mnu_Eg_CI46_1", Editor::presets},
    {"mnu_Eg_CI46_2", Editor::presets},      {"mnu_Eg_Faller", Editor::presets},
    {"mnu_Sg_EigenFz", Editor::presets},     {"mnu_Sg_CI26_1", Editor::presets},
    {"mnu_Sg_CI26_2", Editor::presets},      {"mnu_Sg_CI46_1", Editor::presets},
    {"mnu_Sg_CI46_2", Editor::presets},      {"mnu_Sg_Faller", Editor::presets},
    {"mnu_dcc_adresse", Editor::addresses},  {"mnu_servo_setup", Editor::bothServos},
    {"mnu_servo1", Editor::firstServo},      {"mnu_servo2", Editor::secondServo},
    {"mnu_RZeit_setup", Editor::servoTimes},
};

constexpr MenuShortcut shortcuts[] = {
    {"mnu_open", "Ctrl+O"},          {"mnu_save", "Ctrl+S"},
    {"mnu_save_as", "Ctrl+Shift+S"}, {"mnu_exit", "Ctrl+Q"},
    {"mnu_read_all", "F5"},          {"mnu_FzCVdrucken", "Ctrl+P"},
    {"mnu_index", "Ctrl+G"},         {"mnu_suchen_generell", "Ctrl+F"},
};

} // namespace

std::span<const MenuEntry> menuTree()
{
    return tree;
}

std::size_t menuCaptionNumber(std::string_view name)
{
    std::size_t number = 0;
    for (const MenuEntry& entry : tree) {
        if (entry.name.empty())
            continue;
        ++number;
        if (number == writeTimeOutStatusEntry)
            ++number;
        if (entry.name == name)
            return number;
    }
    return 0;
}

Availability availabilityOf(std::string_view name)
{
    if (offlineListOf(name) != nullptr)
        return Availability::idle;
    const auto* const found = std::find_if(std::begin(availableItems), std::end(availableItems),
                                           [&](const AvailableItem& item) { return item.name == name; });
    return found == std::end(availableItems) ? Availability::notBuilt : found->availability;
}

std::span<const EditorItem> editorItems()
{
    return editors;
}

std::span<const MenuShortcut> menuShortcuts()
{
    return shortcuts;
}

} // namespace karvo
