#include "shell/menu_tree.h"

#include "shell/controllers.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace karvo
{

namespace
{

using enum Availability;

template <typename Controller, typename... Parameters>
Controller& controllerOf(Controllers& controllers, void (Controller::*)(Parameters...))
{
    return controllers.of<Controller>();
}

// A row's handler: calls the function of its controller, with these arguments, or with the row where it takes
// that.
template <auto act, auto... arguments>
void run(Controllers& controllers, const MenuEntry& row)
{
    auto& controller = controllerOf(controllers, act);
    if constexpr (std::is_invocable_v<decltype(act), decltype(controller), const MenuEntry&>)
        (controller.*act)(row);
    else
        (controller.*act)(arguments...);
}

constexpr MenuEntry separator(int depth, std::string_view name)
{
    return {depth, name};
}

// An item of a function sheet, or one that fills values into it.
constexpr MenuEntry sheet(int depth, std::string_view name, std::size_t caption)
{
    return {depth, name, caption, idle, run<&SheetsController::open>, "", {}, Opens::sheet};
}

constexpr MenuEntry page(std::string_view name, std::size_t caption, Opens opens)
{
    return {1, name, caption, idle, run<&SheetsController::describe>, "", {}, opens};
}

// Ready-made values of the braking window.
constexpr char ci46[] = "CI_46.bcr";
constexpr char ci26[] = "CI_26.bcr";
constexpr char faller[] = "Faller.bcr";

// Packs of other hands name captions by their numbers: those up to 133 stay what they are (76 is the status
// text of a write's time-out), and a new item takes the next free one, wherever it stands. Separators
// keep their names likewise: a new one has a name of its own.
constexpr MenuEntry tree[] = {
    {0, "mnu_datei", 1},
    {1, "mnu_nothing", 2},
    {2, "mnu_open", 3, idle, run<&FilesController::open>, "Ctrl+O"},
    separator(2, "mnu_space1"),
    {2, "mnu_kv07", 4, idle, run<&FilesController::showOffline>},
    {2, "mnu_KV08", 5, idle, run<&FilesController::showOffline>},
    {2, "mnu_KV06", 6, idle, run<&FilesController::showOffline>},
    {2, "mnu_KV05", 7, idle, run<&FilesController::showOffline>},
    {2, "mnu_KV04_neu", 8, idle, run<&FilesController::showOffline>},
    {2, "mnu_KV04", 9, idle, run<&FilesController::showOffline>},
    {2, "mnu_karvo_xt_list", 10, idle, run<&FilesController::showOffline>},
    separator(2, "mnu_space2"),
    {2, "mnu_VListe", 11},
    {3, "mnu_KV07_Bus", 12, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV07_FW", 13, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV08_Bus", 14, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV08_FW", 15, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV06_Bus", 16, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV06_FW", 17, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV05_Bus", 18, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV05_FW", 19, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV04_Bus_09", 20, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV04_FW_09", 21, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV04_Bus_08", 22, idle, run<&FilesController::showOffline>},
    {3, "mnu_KV04_FW_08", 23, idle, run<&FilesController::showOffline>},
    separator(1, "mnu_space3"),
    {1, "mnu_save", 24, withList, run<&FilesController::save>, "Ctrl+S"},
    {1, "mnu_save_as", 25, withList, run<&FilesController::saveAs>, "Ctrl+Shift+S"},
    separator(1, "mnu_space4"),
    {1, "mnu_change_more_cv", 26, idle, run<&FilesController::changeMoreCvs>},
    separator(1, "mnu_space5"),
    {1, "mnu_exit", 27, always, run<&FilesController::exit>, "Ctrl+Q"},
    {0, "mnu_CV", 28},
    {1, "mnu_read_all", 29, idle, run<&ReadController::read, ReadStarter::other>, "F5"},
    {1, "mnu_write_all", 30, withList, run<&WriteController::writeAllCvs>},
    {1, "mnu_write_single", 31, withCurrentCv, run<&WriteController::writeCurrent>},
    separator(1, "mnu_space6"),
    {1, "mnu_fahrstufen", 32, withList, run<&EditorsController::editSpeedSteps>, "", Editor::speedTable},
    {1, "mnu_standart", 33, withList, run<&FilesController::showStandard>},
    separator(1, "mnu_space7"),
    {1, "mnu_reset", 34, idle, run<&WriteController::reset>},
    separator(1, "mnu_space8"),
    {1, "mnu_FzCVdrucken", 35, withList, run<&FilesController::print>, "Ctrl+P"},
    separator(1, "mnu_space9"),
    {1, "mnu_clear", 36, idle, run<&ReadController::clear>},
    {0, "mnu_Receiver", 37},
    sheet(1, "mnu_RCV_generell", 38),
    sheet(1, "mnu_RCV_Servo", 39),
    sheet(1, "mnu_RCV_weiche", 40),
    separator(1, "mnu_space10"),
    {1, "mnu_servo_setup", 41, withList, run<&EditorsController::setUpBothServos>, "", Editor::bothServos},
    {1, "mnu_RZeit_setup", 42, withList, run<&EditorsController::setUpServoTimes>, "", Editor::servoTimes},
    separator(1, "mnu_space11"),
    {1, "mnu_CV_clear", 43, idle, run<&WriteController::reset>, "", {}, Opens::receiverReset},
    separator(1, "mnu_space12"),
    {1, "mnu_erkennen", 44},
    sheet(2, "mnu_auswerten_G", 45),
    sheet(2, "mnu_auswerten_F", 46),
    sheet(2, "mnu_auswerten_GF", 47),
    sheet(2, "mnu_auswerten_GPF", 48),
    sheet(1, "mnu_sonder_fct", 49),
    separator(1, "mnu_space13"),
    {1, "mnu_Pre_Licht", 50},
    sheet(2, "mnu_Pre_Licht1", 51),
    sheet(2, "mnu_Pre_Licht2", 52),
    sheet(2, "mnu_Pre_Licht3", 53),
    sheet(2, "mnu_Pre_Licht4", 54),
    sheet(2, "mnu_Pre_Licht5", 55),
    {1, "mnu_Pre_Gattung", 56},
    sheet(2, "mnu_Pre_Gattung1", 57),
    sheet(2, "mnu_Pre_Gattung2", 58),
    sheet(2, "mnu_Pre_Gattung3", 59),
    {1, "mnu_Pre_FzNummer", 60},
    sheet(2, "mnu_Pre_Fahrzeug1", 61),
    sheet(2, "mnu_Pre_Fahrzeug2", 62),
    sheet(2, "mnu_Pre_Fahrzeug3", 63),
    separator(1, "mnu_space14"),
    page("mnu_RCV_anzeigen", 64, Opens::receiverPage),
    {0, "mnu_fzg", 65},
    sheet(1, "mnu_bus", 66),
    sheet(1, "mnu_bus_clear", 67),
    separator(1, "mnu_space15"),
    sheet(1, "mnu_Feuerwehr_Einsatz", 68),
    sheet(1, "mnu_feuerwehr", 69),
    sheet(1, "mnu_feuerwehr_clear", 70),
    separator(1, "mnu_space16"),
    {1, "mnu_bremsen", 71, withList, run<&EditorsController::editBraking>, "", Editor::braking},
    {1, "mnu_Def_Fahrstufen", 72},
    {2, "mnu_FS_CI26_1", 73, withList, run<&PresetsController::writeBaseAndTop>, "", Editor::baseAndTop},
    {2, "mnu_FS_CI26_2", 74, withList, run<&PresetsController::writeBaseAndTop>, "", Editor::baseAndTop},
    {2, "mnu_FS_CI46_1", 75, withList, run<&PresetsController::writeBaseAndTop>, "", Editor::baseAndTop},
    {2, "mnu_FS_CI46_2", 77, withList, run<&PresetsController::writeBaseAndTop>, "", Editor::baseAndTop},
    {2, "mnu_FS_Faller", 78, withList, run<&PresetsController::writeBaseAndTop>, "", Editor::baseAndTop},
    {1, "mnu_Eigene_Fahrstufen", 79},
    {2, "menu_Eg_Load", 80},
    {3, "mnu_Eg_EigenFz", 81, idle, run<&PresetsController::loadOwn>, "", Editor::presets},
    {3, "mnu_Eg_CI26_1", 82, idle, run<&PresetsController::load>, "", Editor::presets},
    {3, "mnu_Eg_CI26_2", 83, idle, run<&PresetsController::load>, "", Editor::presets},
    {3, "mnu_Eg_CI46_1", 84, idle, run<&PresetsController::load>, "", Editor::presets},
    {3, "mnu_Eg_CI46_2", 85, idle, run<&PresetsController::load>, "", Editor::presets},
    {3, "mnu_Eg_Faller", 86, idle, run<&PresetsController::load>, "", Editor::presets},
    {2, "mnu_Eg_save", 87},
    {3, "mnu_Sg_EigenFz", 88, idle, run<&PresetsController::saveOwn>, "", Editor::presets},
    {3, "mnu_Sg_CI26_1", 89, idle, run<&PresetsController::save>, "", Editor::presets},
    {3, "mnu_Sg_CI26_2", 90, idle, run<&PresetsController::save>, "", Editor::presets},
    {3, "mnu_Sg_CI46_1", 91, idle, run<&PresetsController::save>, "", Editor::presets},
    {3, "mnu_Sg_CI46_2", 92, idle, run<&PresetsController::save>, "", Editor::presets},
    {3, "mnu_Sg_Faller", 93, idle, run<&PresetsController::save>, "", Editor::presets},
    separator(1, "mnu_space17"),
    {1, "mnu_licht", 94},
    sheet(2, "mnu_licht60", 95),
    sheet(2, "mnu_blaulicht", 96),
    sheet(1, "mnu_tsop", 97),
    {1, "mnu_dcc_adresse", 98, withList, run<&EditorsController::editAddresses>, "", Editor::addresses},
    {1, "mnu_ABS", 99},
    {2, "mnu_CI46", 100, withList, run<&EditorsController::editBrakingOf, ci46>, "", Editor::braking},
    {2, "mnu_CI26", 101, withList, run<&EditorsController::editBrakingOf, ci26>, "", Editor::braking},
    {2, "mnu_Faller", 102, withList, run<&EditorsController::editBrakingOf, faller>, "", Editor::braking},
    sheet(1, "mnu_spur", 103),
    {1, "mnu_servo", 104},
    {2, "mnu_servo1", 105, withList, run<&EditorsController::setUpFirstServo>, "", Editor::firstServo},
    {2, "mnu_servo2", 106, withList, run<&EditorsController::setUpSecondServo>, "", Editor::secondServo},
    separator(1, "mnu_space21"),
    sheet(1, "mnu_fahren", 134),
    sheet(1, "mnu_tacho", 135),
    sheet(1, "mnu_battery", 136),
    sheet(1, "mnu_ausgaenge", 137),
    sheet(1, "mnu_tasten", 138),
    page("mnu_anzeigen", 139, Opens::vehiclePage),
    {0, "mnu_suchen", 107},
    {1, "mnu_com", 108, idle, run<&PortController::find>},
    separator(1, "mnu_space18"),
    {1, "mnu_index", 109, withList, run<&SearchController::askCvNumber>, "Ctrl+G"},
    {1, "mnu_suchen_generell", 110, withList, run<&SearchController::askWord>, "Ctrl+F"},
    {0, "mnu_vergleichen", 111, idle, run<&FilesController::compare>},
    {0, "mnu_firmware", 112, idle, run<&FirmwareController::update>},
    {0, "mnu_wartung", 113},
    {1, "mnu_wartung_save", 114},
    {1, "mnu_wartung_read", 115},
    separator(1, "mnu_space19"),
    {1, "mnu_eeprom_show", 116, idle, run<&MemoryController::showImage>},
    {1, "mnu_RAM", 117, idle, run<&MemoryController::showMemory>},
    separator(1, "mnu_space20"),
    {1, "mnu_kv07_Firmware", 118, idle, run<&FirmwareController::upgrade>},
    {0, "mnu_Sprache", 119},
    {1, "mnu_german", 120, idle, run<&LanguageController::choose>},
    {1, "mnu_dutch", 121, idle, run<&LanguageController::choose>},
    {1, "mnu_english", 122, idle, run<&LanguageController::choose>},
    {1, "mnu_spanisch", 123, idle, run<&LanguageController::choose>},
    {1, "mnu_franz", 124, idle, run<&LanguageController::choose>},
    {0, "mnu_upgrade", 125},
    {1, "mnu_unzip", 126, idle, run<&DownloadController::unpackArchive>},
    {1, "mnu_download", 127, idle, run<&DownloadController::downloadArchive>},
    {0, "mnu_help", 128},
    {1, "mnu_hilfe_XT", 129, idle, run<&HelpController::showModuleHelp>},
    {1, "mnu_cv_datei", 130, withList, run<&HelpController::showDecoderInfo>},
    {1, "mnu_about", 131, idle, run<&HelpController::showAbout>},
    sheet(1, "mnu_Lorry", 132),
    {0, "mnu_version", 133, idle, run<&HelpController::showVersion>},
};

constexpr bool eachRowHasItsOwnNameAndCaption()
{
    for (const MenuEntry& one : tree) {
        for (const MenuEntry& other : tree) {
            const bool sameCaption = one.caption == other.caption && !one.isSeparator();
            if (&one != &other && (one.name == other.name || sameCaption))
                return false;
        }
    }
    return true;
}
static_assert(eachRowHasItsOwnNameAndCaption());

} // namespace

std::span<const MenuEntry> menuTree()
{
    return tree;
}

const MenuEntry* menuEntry(std::string_view name)
{
    const auto* const found = std::find_if(std::begin(tree), std::end(tree),
                                           [&](const MenuEntry& entry) { return entry.name == name; });
    return found == std::end(tree) ? nullptr : found;
}

Text menuCaption(const LanguageTables& texts, std::string_view name)
{
    return texts.menuCaption(menuEntry(name)->caption);
}

} // namespace karvo
