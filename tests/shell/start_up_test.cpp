// The program's command line, its start, and the program put together on the real platform.
#include "platform/text_conversion.h"
#include "shell/karvo_program.h"
#include "shell/options.h"
#include "shell/recovery_slot.h"
#include "shell/start_up.h"
#include "shell/window_bench.h"
#include "support/scratch_folder.h"

#include <QProcess>

namespace karvo::test
{

TEST(Options, AreReadFromTheCommandLine)
{
    using Words = std::vector<std::string>;
    const auto options =
        parseOptions({"--simulate", "kv07", "--map-port", "COM5=/dev/ttyUSB0", "--map-port=COM6=/dev/ttyUSB1",
                      "--program-folder=/opt/karvo", "--read", "--language", "fr", "--settings=k.ini",
                      "-platform", "offscreen"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.simulate, "kv07");
    EXPECT_EQ(options.programFolder, "/opt/karvo");
    EXPECT_EQ(options.language, "fr");
    EXPECT_EQ(options.settingsFile, "k.ini");
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

TEST(KarvoProgram, ReadsTheSimulatedDecoderAtTheStoredPort)
{
    const ModalDriver driver; // no box may come
    const ScratchFolder folder;
    const auto settings = pathToQString(folder.write("karvo.ini", "[Parameter]\nCom_Port=17\n"));
    ProgramSetup setup{KARVO_PROGRAM_FOLDER,      {}, {}, settings, LanguageCode::english,
                       sim::decoderByName("kv04")};
    KarvoProgram program(setup);
    ASSERT_TRUE(program.start());
    Hauptform& window = program.window();
    EXPECT_TRUE(find<QComboBox>(window, "COM").currentText().startsWith(QStringLiteral("COM17")));
    EXPECT_EQ(window.findChildren<QObject*>(QStringLiteral("MSComm1")).size(), 1);
    const auto& timer = find<QTimer>(window, "Timer1");
    EXPECT_TRUE(timer.interval() == 5000 && !timer.isActive());
    window.readSoon();
    const auto& list = find<QListWidget>(window, "List1");
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.count() > 100; }, 20000));
}

TEST(KarvoProgram, AnswersOnTheCommandLine)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"--version", 0, "karvo 1."},
        {"--help", 0, "Usage: karvo"},
        {"--nonsense", 2, "karvo: unknown option --nonsense"},
        {"stray", 2, "karvo: unknown argument stray"},
        {"--simulate kv99", 2, "karvo: there is no simulated decoder kv99"},
        {"--map-port=COM0=/dev/x", 2, "karvo: --map-port needs a port"},
    };
    for (const auto& [arguments, exitCode, words] : cases) {
        QProcess process;
        process.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo"),
                      QString::fromLatin1(arguments).split(u' '));
        ASSERT_TRUE(process.waitForFinished(20000)) << arguments;
        EXPECT_EQ(process.exitCode(), exitCode) << arguments;
        process.setReadChannel(exitCode == 0 ? QProcess::StandardOutput : QProcess::StandardError);
        EXPECT_TRUE(process.readAll().contains(words)) << arguments;
    }
}

} // namespace karvo::test
