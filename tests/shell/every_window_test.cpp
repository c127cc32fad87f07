// Each window of the program, in two languages: keyboard, names, small screens.
#include "editors/forms/bremsen.h"
#include "editors/forms/dcc_adresse.h"
#include "editors/forms/fahrstufen.h"
#include "editors/forms/function_sheet_form.h"
#include "editors/forms/live_dialog.h"
#include "editors/forms/pre_fahrstufen.h"
#include "editors/forms/servo_addresse.h"
#include "editors/forms/settings_page.h"
#include "editors/sheet_file.h"
#include "firmware/forms/eeprom.h"
#include "firmware/forms/firmware_ablauf.h"
#include "firmware/forms/image_changes.h"
#include "firmware/forms/speicher.h"
#include "firmware/forms/unzip_dialog.h"
#include "firmware/forms/upgrade.h"
#include "language/forms/language_dialog.h"
#include "language/language_loader.h"
#include "link/forms/aktive_com.h"
#include "shell/write_report_dialog.h"
#include "workbench/forms/more_cvs_dialog.h"
#include "workbench/forms/schreibvorschau.h"
#include "workbench/forms/vehicle_printout.h"
#include "workbench/forms/vergleichen.h"

#include "shell/window_bench.h"
#include "support/hex_file.h"
#include "support/window_check.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

struct EveryWindow : FormBench {
    FixedClock clock;
    WritePreview preview;
    WriteReport report;

    explicit EveryWindow(LanguageCode code)
    {
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        EXPECT_FALSE(loadLanguage(state.texts, code, state.programFolder, files).missing);
        preview.rows = {{.cv = 3, .name = u"Bremswirkung", .held = 4, .value = 5}};
        preview.otherVehicle = true;
        preview.lowBattery = {150, 160};
        state.lastRead.emplace().profile.typeCode = TypeCode::kv07;
        report.outcomes = {{.cv = 3, .value = 5}, {.cv = 4, .value = 5}};
        report.end = WriteManyEnd::stoppedByUser;
    }
    template <typename Window, typename... Arguments>
    void check(Arguments&&... arguments)
    {
        Window window(std::forward<Arguments>(arguments)...);
        checkWindow(window);
    }
    void checkAll()
    {
        const LanguageTables none;
        check<Language>(none, languageButtonCaptions(u"DEU"), LanguageCode::german, prompts);
        const auto devices = [] { return std::vector<PortDevice>(31); };
        check<Aktive_COM>(state.link, line, settings, state.texts, devices, ListNewPorts());
        check<DCC_Adresse>(state.set, prompts, state.texts);
        check<Servo_Addresse>(state.set, prompts, state.texts);
        check<Bremsen>(bench, "");
        check<Fahrstufen>(bench);
        check<FahrstufenF5>(bench);
        check<Pre_Fahrstufen>(bench);
        check<Servo_Setup2>(bench);
        check<Servo_Setup3>(bench);
        check<Servo_Setup4>(bench);
        check<RZeit_Setup>(bench);
        check<Upgrade>(bench, std::get<HexImage>(parseHexImage(bytesOf(hexFile(9)))));
        check<Firmware_Ablauf>(bench);
        check<Speicher>(bench, Speicher::SpeedSteps());
        check<EEPROM>(bench);
        check<Abbild_Aenderungen>(std::vector<ImageChange>{{48, 20, 9, WriteSkip::none}}, state, nullptr);
        check<Unzip_Dialog>(state.texts, UnzipRequest{"Update.zip", "folder"});
        check<Vergleichen>(bench);
        check<FzCVdrucken>(bench, clock);
        const auto sheet = std::get<FunctionSheet>(parseSheet(
            bytesOf("sheet;bus;\ntext;;Bus;\npicture;bus_stop;\nsection;\ntext;;Halt;\ncv;2;\ncv;3;\n"
                    "address;first;\nvariant;CV2=3;\nready;CV2=4;\ntext;;vier;\n")));
        check<FunctionSheetForm>(bench, viewOf(sheet, state.set, state.texts, state.language), "bus");
        check<SettingsPage>(state.texts, prompts, "anzeigen", QStringLiteral("Worte"),
                            describeSettings(state.set, {}, state.texts, state.language));
        check<Change_more_CV>(bench);
        check<Schreibvorschau>(preview, state, nullptr);
        check<Schreibbericht>(report, state.texts, nullptr);
    }
};

TEST(EveryWindow, IsReachedByKeyboardNamedAndWholeOnASmallScreen)
{
    for (const LanguageCode code : {LanguageCode::german, LanguageCode::french})
        EveryWindow(code).checkAll();
}

} // namespace karvo::test
