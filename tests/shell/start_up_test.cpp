// What happens before the main window is there.
#include "shell/start_up.h"

#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "shell/controls.h"
#include "shell/main_window_view.h"
#include "shell/options.h"
#include "shell/recovery_slot.h"
#include "support/modal_driver.h"
#include "support/scratch_folder.h"
#include "ui/window_prompts.h"

namespace karvo::test
{

TEST(Options, AreReadFromTheCommandLine)
{
    using Words = std::vector<std::string>;
    const auto options =
        parseOptions({"--simulate", "kv07", "--map-port", "COM5=/dev/ttyUSB0", "--map-port=COM6=/dev/ttyUSB1",
                      "--program-folder=/opt/karvo", "--read", "--language", "fr", "-platform", "offscreen"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.simulate, "kv07");
    EXPECT_EQ(options.programFolder, "/opt/karvo");
    EXPECT_EQ(options.language, "fr");
    EXPECT_EQ(options.mapPorts, Words({"COM5=/dev/ttyUSB0", "COM6=/dev/ttyUSB1"}));
    EXPECT_TRUE(options.read && !options.help && !options.version);
    EXPECT_EQ(options.others, Words({"-platform", "offscreen"})) << "the window system's";
    EXPECT_EQ(parseOptions({"--simulated", "kv07"}).error, "unknown option --simulated");
    EXPECT_EQ(parseOptions({"--read", "--map-port"}).error, "option --map-port needs a value");
    EXPECT_EQ(parseOptions({"--language="}).error, "option --language needs a value");
    EXPECT_EQ(parseOptions({"--read=yes"}).error, "option --read takes no value");
    EXPECT_NE(helpText().find("kv04-2008"), std::string::npos);
}

TEST(RecoverySlot, ProgramsSideBySideHaveFilesOfTheirOwn)
{
    const ScratchFolder folder;
    const auto path = folder.path() / "new" / "deep";
    std::vector<std::unique_ptr<RecoverySlot>> places;
    for (int place = 1; place <= 12; ++place) {
        places.push_back(RecoverySlot::take(path));
        ASSERT_TRUE(places.back());
        EXPECT_EQ(places.back()->file(), path / ("recovery-" + std::to_string(place) + ".kvr"));
    }
    // All end, the second one by a crash with changes: whoever starts next takes care of them.
    places.clear();
    EXPECT_TRUE(std::filesystem::is_empty(path)) << "no lock is left";
    folder.write("new/deep/recovery-2.kvr", "left");
    const auto next = RecoverySlot::take(path);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->file(), path / "recovery-2.kvr");
    EXPECT_EQ(RecoverySlot::take(path / "recovery-2.kvr" / "deep"), nullptr) << "a file is in the way";
}

struct FixedLocale : LocaleInfo {
    explicit FixedLocale(Text abbreviation) : country(std::move(abbreviation)) {}
    Text countryAbbreviation() const override { return country; }
    Text country;
};

struct StartBench {
    QtFiles files;
    MemorySettings settings;
    QtWait wait;
    SimulatedPort port{sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none), 1};
    ProgramState state;
    WindowPrompts prompts{state.texts, [this] { wait.endProgram(); }};
    MainWindowView view;
    Workbench bench{state, port, wait, prompts, view, files, settings};
    ModalDriver driver;

    explicit StartBench(TextView stored)
    {
        state.programFolder = KARVO_PROGRAM_FOLDER;
        settings.values["Parameter/Language"] = stored;
    }
    void expectChoice(std::function<void(QWidget&)> act) { driver.expect(QStringLiteral("Language"), act); }
    void expectBox(const char* text) { driver.expectBox(QString::fromUtf8(text), QStringLiteral("OK")); }
    bool start(std::optional<LanguageCode> wanted = std::nullopt)
    {
        return startUp(bench, FixedLocale(u"france"), {wanted, {}});
    }
    Text stored() { return settings.values["Parameter/Language"]; }
    Text fileMenu() { return state.texts.menuCaption(1); }
};

TEST(StartUp, OffersTheLanguagesInTheWordsOfTheLocaleAndStoresTheChoice)
{
    StartBench bench(u"9"); // nonsense
    bench.expectChoice([](QWidget& window) {
        std::string words;
        for (const auto& name : wordsOf("German Dutch English Spanish French"))
            words += find<QAbstractButton>(window, name).text().toStdString() + " ";
        EXPECT_EQ(words, "Allemande Néelandaise Anglais Espagnol Français ");
        click(window, "Dutch");
        click(window, "OK");
    });
    EXPECT_TRUE(bench.start());
    EXPECT_EQ(bench.stored() + bench.fileMenu(), u"2Bestand");
}

TEST(StartUp, TakesTheLanguageThatIsStoredOrAskedForAndSaysOnceThatNothingCanBeStored)
{
    StartBench bench(u"4");
    EXPECT_TRUE(bench.start());
    EXPECT_EQ(bench.stored() + bench.fileMenu(), u"4Archivo");
    bench.settings.unwritable = u"/etc/Karvo.conf";
    bench.expectBox("The settings cannot be stored: /etc/Karvo.conf. What you choose now, language and port "
                    "included, lasts until the program ends only. To keep it, you need the right to write "
                    "there.");
    EXPECT_TRUE(bench.start(LanguageCode::english));
    EXPECT_EQ(bench.stored() + bench.fileMenu(), u"3File");
}

TEST(StartUp, EndsWithoutALanguageOrItsFile)
{
    for (const std::function<void(QWidget&)>& leave : {clicking("Cancel"), std::function(closeIt)}) {
        StartBench bench(u"");
        bench.expectChoice(leave);
        bench.expectBox("Programm wird beendet !\r\n\r\nProgramma sluit !\r\n\r\nProgram will be closed !");
        EXPECT_FALSE(bench.start());
        EXPECT_TRUE(bench.prompts.hasEnded());
        EXPECT_EQ(bench.stored(), u"");
    }
    StartBench bench(u"5");
    bench.state.programFolder = KARVO_SOURCE_FOLDER;
    bench.expectBox("File [Franz_var.txt] not available !\r\nSet language to German.\r\n\r\nProgram will be "
                    "closed");
    EXPECT_FALSE(bench.start());
    EXPECT_TRUE(bench.prompts.hasEnded());
}

} // namespace karvo::test
