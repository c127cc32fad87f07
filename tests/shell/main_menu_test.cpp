#include "shell/window_bench.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <fstream>

namespace karvo::test
{

namespace
{

struct Expected {
    int depth;
    std::string name;
    std::string german;
};

// clang-format off
const std::vector<Expected> expectedMenu = {
    {0, "mnu_datei", "Datei"},
    {1, "mnu_nothing", "CV Liste öffnen"},
    {2, "mnu_open", "Abgespeicherte Liste"},
    {2, "mnu_kv07", "KV07 Standart Liste"},
    {2, "mnu_KV08", "KV08 Standart Liste"},
    {2, "mnu_KV06", "KV06 Standart Liste"},
    {2, "mnu_KV05", "KV05 Standart Liste"},
    {2, "mnu_KV04_neu", "KV04 Liste ab Januar 2009"},
    {2, "mnu_KV04", "KV04 Liste bis Dezember 2008"},
    {2, "mnu_karvo_xt_list", "Karvo XT Liste"},
    {2, "mnu_VListe", "Vordefinierte CV Listen Automatik"},
    {3, "mnu_KV07_Bus", "KV07 Bus Automatik"},
    {3, "mnu_KV07_FW", "KV07 Feuerwehr Automatik"},
    {3, "mnu_KV08_Bus", "KV08 Bus Automatik"},
    {3, "mnu_KV08_FW", "KV08 Feuerwehr Automatik"},
    {3, "mnu_KV06_Bus", "KV06 Bus Automatik"},
    {3, "mnu_KV06_FW", "KV06 Feuerwehr Automatik"},
    {3, "mnu_KV05_Bus", "KV05 Bus Automatik"},
    {3, "mnu_KV05_FW", "KV05 Feuerwehr Automatik"},
    {3, "mnu_KV04_Bus_09", "KV04 Bus Automatik ab Januar 2009"},
    {3, "mnu_KV04_FW_09", "KV04 Feuerwehr Automatik ab Januar 2009"},
    {3, "mnu_KV04_Bus_08", "KV04 Bus Automatik bis Dezember 2008"},
    {3, "mnu_KV04_FW_08", "KV04 Feuerwehr Automatik bis Dezember 2008"},
    {1, "mnu_save", "CV Liste speichern"},
    {1, "mnu_save_as", "CV Liste speichern unter..."},
    {1, "mnu_change_more_cv", "Einzelne CVs in gespeicherten Dateien ändern"},
    {1, "mnu_exit", "Beenden"},
    {0, "mnu_CV", "CV"},
    {1, "mnu_read_all", "Alle CVs vom Fahrzeug einlesen"},
    {1, "mnu_write_all", "Alle CVs ins Fahrzeug speichern"},
    {1, "mnu_write_single", "Diese CV ins Fahrzeug speichern"},
    {1, "mnu_fahrstufen", "Fahrstufen-Tabelle"},
    {1, "mnu_standart", "CV Standart Liste einlesen"},
    {1, "mnu_reset", "Reset der CVs im Fahrzeug"},
    {1, "mnu_FzCVdrucken", "Fahrzeug CV ausdrucken"},
    {1, "mnu_clear", "Anzeige löschen"},
    {0, "mnu_Receiver", "Empfänger Funktion"},
    {1, "mnu_RCV_generell", "Generell"},
    {1, "mnu_RCV_Servo", "Lichtfunktion"},
    {1, "mnu_RCV_weiche", "Weichenfunktion"},
    {1, "mnu_servo_setup", "Servo einstellen"},
    {1, "mnu_RZeit_setup", "Rückstellzeit einstellen"},
    {1, "mnu_CV_clear", "Alle CVs zurücksetzen"},
    {1, "mnu_erkennen", "Erkennen"},
    {2, "mnu_auswerten_G", "Auswertung der Gattungen"},
    {2, "mnu_auswerten_F", "Auswertung der Fahrzeugnummern"},
    {2, "mnu_auswerten_GF", "Auswertung Gattung mit Fahrzeugnummer"},
    {2, "mnu_auswerten_GPF", "Auswertung lange Nummer"},
    {1, "mnu_sonder_fct", "Sonderfunktion"},
    {1, "mnu_Pre_Licht", "Vordefinierte Lichtfunktionen"},
    {2, "mnu_Pre_Licht1", "Lichtfunktion 1"},
    {2, "mnu_Pre_Licht2", "Lichtfunktion 2"},
    {2, "mnu_Pre_Licht3", "Lichtfunktion 3"},
    {2, "mnu_Pre_Licht4", "Lichtfunktion 4"},
    {2, "mnu_Pre_Licht5", "Lichtfunktion 5"},
    {1, "mnu_Pre_Gattung", "Vordefinierte Auswertung Gattung"},
    {2, "mnu_Pre_Gattung1", "Gattung 1"},
    {2, "mnu_Pre_Gattung2", "Gattung 2"},
    {2, "mnu_Pre_Gattung3", "Gattung 3"},
    {1, "mnu_Pre_FzNummer", "Vordefinierte Auswertung Fahrzeugnummer"},
    {2, "mnu_Pre_Fahrzeug1", "Fahrzeugnummer 1"},
    {2, "mnu_Pre_Fahrzeug2", "Fahrzeugnummer 2"},
    {2, "mnu_Pre_Fahrzeug3", "Fahrzeugnummer 3"},
    {1, "mnu_RCV_anzeigen", "Einstellung anzeigen"},
    {0, "mnu_fzg", "Fahrzeug Funktion"},
    {1, "mnu_bus", "Bus Automatik"},
    {1, "mnu_bus_clear", "Bus Automatik löschen"},
    {1, "mnu_Feuerwehr_Einsatz", "Feuerwehr Automatik für Einsatzfahrt"},
    {1, "mnu_feuerwehr", "Feuerwehr Automatik einfach"},
    {1, "mnu_feuerwehr_clear", "Feuerwehr Automatik löschen"},
    {1, "mnu_bremsen", "Brems- und Beschleunigungswerte ändern"},
    {1, "mnu_Def_Fahrstufen", "Vorgegebene Werte für Fahrstufe 1-28"},
    {2, "mnu_FS_CI26_1", "CI26, Tabelle 12"},
    {2, "mnu_FS_CI26_2", "CI26, Tabelle 24"},
    {2, "mnu_FS_CI46_1", "CI46, Tabelle 12"},
    {2, "mnu_FS_CI46_2", "CI46, Tabelle 24"},
    {2, "mnu_FS_Faller", "Faller"},
    {1, "mnu_Eigene_Fahrstufen", "Eigene Werte für alle Fahrstufen"},
    {2, "menu_Eg_Load", "Laden..."},
    {3, "mnu_Eg_EigenFz", "Eigenes Fahrzeug"},
    {3, "mnu_Eg_CI26_1", "CI26, Tabelle 12"},
    {3, "mnu_Eg_CI26_2", "CI26, Tabelle 24"},
    {3, "mnu_Eg_CI46_1", "CI46, Tabelle 12"},
    {3, "mnu_Eg_CI46_2", "CI46, Tabelle 24"},
    {3, "mnu_Eg_Faller", "Faller"},
    {2, "mnu_Eg_save", "Speichern"},
    {3, "mnu_Sg_EigenFz", "Eigenes Fahrzeug"},
    {3, "mnu_Sg_CI26_1", "CI26, Tabelle 12"},
    {3, "mnu_Sg_CI26_2", "CI26, Tabelle 24"},
    {3, "mnu_Sg_CI46_1", "CI46, Tabelle 12"},
    {3, "mnu_Sg_CI46_2", "CI46, Tabelle 24"},
    {3, "mnu_Sg_Faller", "Faller"},
    {1, "mnu_licht", "Lichtfunktionen"},
    {2, "mnu_licht60", "Lichter koppeln und umpolen"},
    {2, "mnu_blaulicht", "Blaulicht Funktion"},
    {1, "mnu_tsop", "LCIR einstellen"},
    {1, "mnu_dcc_adresse", "DCC Adresse(n) programmieren"},
    {1, "mnu_ABS", "Bremsen & Beschleunigen"},
    {2, "mnu_CI46", "CI46"},
    {2, "mnu_CI26", "CI26"},
    {2, "mnu_Faller", "Faller"},
    {1, "mnu_spur", "Spurkontrolle"},
    {1, "mnu_servo", "Servo Funktion"},
    {2, "mnu_servo1", "Servo 1"},
    {2, "mnu_servo2", "Servo 2"},
    {0, "mnu_suchen", "Suchen"},
    {1, "mnu_com", "Suche vorhandene COM Schnittstelle"},
    {1, "mnu_index", "Suchen nach CV Index"},
    {1, "mnu_suchen_generell", "Suchen nach Stichwort"},
    {0, "mnu_vergleichen", "Vergleichen"},
    {0, "mnu_firmware", "Firmware Update"},
    {0, "mnu_wartung", "Wartung"},
    {1, "mnu_wartung_save", "Wartungseintrag schreiben"},
    {1, "mnu_wartung_read", "Wartungseintrag lesen"},
    {1, "mnu_eeprom_show", "EEPROM anzeigen"},
    {1, "mnu_RAM", "Speicher anzeigen"},
    {1, "mnu_kv07_Firmware", "Upgrade KV07"},
    {0, "mnu_Sprache", "Sprache"},
    {1, "mnu_german", "Deutsch"},
    {1, "mnu_dutch", "Niederland"},
    {1, "mnu_english", "Englisch"},
    {1, "mnu_spanisch", "Spanisch"},
    {1, "mnu_franz", "Französisch"},
    {0, "mnu_upgrade", "Upgrade"},
    {1, "mnu_unzip", "Unzip File"},
    {1, "mnu_download", "Download"},
    {0, "mnu_help", "Hilfe"},
    {1, "mnu_hilfe_XT", "Karvo XT Modul"},
    {1, "mnu_cv_datei", "Decoder Info"},
    {1, "mnu_about", "Über uns..."},
    {1, "mnu_Lorry", "Anhänger Code"},
    {0, "mnu_version", "V01_23"},
};
// clang-format on

std::string captionOf(const QAction& action)
{
    return action.text().replace(QStringLiteral("&&"), QStringLiteral("&")).toStdString();
}

// Every item below a widget with its depth, and the names of the separators.
void walk(const QWidget& menu, int depth, std::vector<Expected>& items, std::vector<std::string>& separators)
{
    for (const QAction* action : menu.actions()) {
        if (action->isSeparator()) {
            separators.push_back(action->objectName().toStdString());
            continue;
        }
        items.push_back({depth, action->objectName().toStdString(), captionOf(*action)});
        if (action->menu() != nullptr) {
            EXPECT_EQ(action->menu()->objectName(), action->objectName());
            walk(*action->menu(), depth + 1, items, separators);
        }
    }
}

// Caption entries by their position in the installed file, in UTF-8.
std::vector<std::string> installedMenu(std::string_view fileName)
{
    std::ifstream file(std::filesystem::path(KARVO_PROGRAM_FOLDER) / fileName, std::ios::binary);
    std::vector<std::string> captions{std::string()};
    for (std::string line; std::getline(file, line);) {
        const std::string text = line.substr(4, line.size() - 5); // four digits before, CR behind
        captions.push_back(QString::fromLatin1(text).toStdString());
    }
    return captions;
}

} // namespace

TEST(MainMenu, StandsInDesignOrderWithItsCaptions)
{
    WindowBench bench;
    std::vector<Expected> items;
    std::vector<std::string> separators;
    walk(*bench.window->menuBar(), 0, items, separators);
    ASSERT_EQ(items.size(), expectedMenu.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i].name, expectedMenu[i].name) << "at " << i;
        EXPECT_EQ(items[i].depth, expectedMenu[i].depth) << items[i].name;
        EXPECT_EQ(items[i].german, expectedMenu[i].german) << items[i].name;
    }
}

TEST(MainMenu, NamesItsSeparators)
{
    WindowBench bench;
    std::vector<Expected> items;
    std::vector<std::string> separators;
    walk(*bench.window->menuBar(), 0, items, separators);
    ASSERT_GE(separators.size(), 10U);
    for (std::size_t i = 0; i < separators.size(); ++i)
        EXPECT_EQ(separators[i], "mnu_space" + std::to_string(i + 1));
}

TEST(MainMenu, TakesCaptionsByRunningNumberWithoutEntry76)
{
    for (const LanguageCode code : allLanguages) {
        const auto installed = installedMenu(languageFiles(code).menuFile);
        BenchSetup setup;
        setup.language = code;
        WindowBench bench(setup);
        std::vector<Expected> items;
        std::vector<std::string> separators;
        walk(*bench.window->menuBar(), 0, items, separators);
        ASSERT_EQ(installed.size(), items.size() + 2); // entry 0, and entry 76
        for (std::size_t i = 0; i < items.size(); ++i)
            EXPECT_EQ(items[i].german, installed[i < 75 ? i + 1 : i + 2]) << items[i].name;
    }
}

TEST(MainMenu, SaysOfItemsThatAreNotBuilt)
{
    WindowBench bench;
    const std::string tip = "Diese Funktion gibt es in dieser Version noch nicht.";
    for (const char* name : {"mnu_spur", "mnu_licht60", "mnu_RAM", "mnu_Lorry"}) {
        EXPECT_FALSE(bench.item(name).isEnabled()) << name;
        EXPECT_EQ(bench.item(name).statusTip().toStdString(), tip) << name;
        EXPECT_EQ(bench.item(name).toolTip().toStdString(), tip) << name;
    }
    for (const char* name :
         {"mnu_exit",          "mnu_open",    "mnu_change_more_cv", "mnu_read_all",      "mnu_clear",
          "mnu_com",           "mnu_version", "mnu_about",          "mnu_german",        "mnu_franz",
          "mnu_vergleichen",   "mnu_kv07",    "mnu_firmware",       "mnu_kv07_Firmware", "mnu_KV04_FW_08",
          "mnu_karvo_xt_list", "mnu_datei",   "mnu_VListe",         "mnu_suchen",        "mnu_Pre_Licht"}) {
        EXPECT_TRUE(bench.item(name).isEnabled()) << name;
        EXPECT_EQ(bench.item(name).statusTip().toStdString(), "") << name;
    }
}

TEST(MainMenu, TellsTheReasonWhenTheMouseComesOverADisabledItemOfTheBar)
{
    WindowBench bench;
    QMenuBar& bar = *bench.window->menuBar();
    QString shown;
    QObject::connect(bench.window->statusBar(), &QStatusBar::messageChanged,
                     [&](const QString& text) { shown = text; });
    bench.item("mnu_vergleichen").setStatusTip(QStringLiteral("not now"));
    bench.item("mnu_vergleichen").setEnabled(false);
    QTest::mouseMove(&bar, bar.actionGeometry(&bench.item("mnu_vergleichen")).center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shown.isEmpty(); }));
    EXPECT_EQ(shown.toStdString(), "not now");
}

TEST(MainMenu, EnablesWhatNeedsAListOnceOneStands)
{
    WindowBench bench;
    const auto states = [&] {
        std::vector<bool> enabled;
        for (const char* name :
             {"mnu_index", "mnu_suchen_generell", "mnu_standart", "mnu_cv_datei", "mnu_write_all"})
            enabled.push_back(bench.item(name).isEnabled());
        return enabled;
    };
    EXPECT_EQ(states(), std::vector<bool>(5, false));
    bench.showOfflineList();
    EXPECT_EQ(states(), std::vector<bool>(5, true));
    EXPECT_FALSE(bench.item("mnu_write_single").isEnabled()) << "no CV is chosen";
    bench.chooseCv(2);
    EXPECT_TRUE(bench.item("mnu_write_single").isEnabled());
    bench.item("mnu_clear").trigger();
    EXPECT_EQ(states(), std::vector<bool>(5, false));
    EXPECT_FALSE(bench.item("mnu_write_single").isEnabled());
}

TEST(MainMenu, SaysWhyAnEditorDoesNotOpen)
{
    WindowBench bench;
    EXPECT_EQ(bench.item("mnu_bremsen").toolTip().toStdString(),
              bench.message(Message::editorNeedsList).toStdString());
    EXPECT_TRUE(bench.item("mnu_Sg_Faller").isEnabled()) << "it says itself what is missing";
    bench.showOfflineList();
    EXPECT_TRUE(bench.item("mnu_bremsen").isEnabled());
    EXPECT_EQ(bench.item("mnu_bremsen").statusTip(), QString());
    bench.state.set.profile.model = Model::receiver;
    bench.view.listChanged();
    const std::string german = bench.item("mnu_bremsen").statusTip().toStdString();
    EXPECT_TRUE(german.starts_with("Das gibt es nur bei KV04")) << german;
    for (const char* name : {"mnu_bremsen", "mnu_CI46", "mnu_FS_Faller", "mnu_Eg_Faller", "mnu_fahrstufen"})
        EXPECT_FALSE(bench.item(name).isEnabled()) << name;
    EXPECT_TRUE(bench.item("mnu_dcc_adresse").isEnabled());
    bench.item("mnu_english").trigger();
    EXPECT_EQ(bench.item("mnu_bremsen").toolTip().toStdString().substr(0, 9), "Only KV04");
}

TEST(MainMenu, MarksTheLanguageInUse)
{
    BenchSetup setup;
    setup.language = LanguageCode::spanish;
    WindowBench bench(setup);
    const auto marked = [&] {
        std::string names;
        for (const char* name : {"mnu_german", "mnu_dutch", "mnu_english", "mnu_spanisch", "mnu_franz"})
            names += bench.item(name).isChecked() ? name : "";
        return names;
    };
    EXPECT_EQ(marked(), "mnu_spanisch");
    bench.item("mnu_franz").trigger();
    EXPECT_EQ(marked(), "mnu_franz");
}

} // namespace karvo::test
