#include "shell/start_up.h"

#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "shell/controls.h"
#include "shell/main_window_view.h"
#include "support/modal_driver.h"
#include "ui/window_prompts.h"

namespace karvo::test
{

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

    explicit StartBench(TextView stored = {})
    {
        state.programFolder = KARVO_PROGRAM_FOLDER;
        settings.values["Parameter/Language"] = stored;
    }
    void expectChoice(std::function<void(QWidget&)> act)
    {
        driver.expect(QStringLiteral("Language"), [act](QWidget& window) {
            EXPECT_EQ(window.objectName().toStdString(), "Language");
            act(window);
        });
    }
    bool start(const Text& country = u"DEU", const StartChoices& choices = {})
    {
        return startUp(bench, FixedLocale(country), choices);
    }
    Text stored() { return settings.values["Parameter/Language"]; }
};

TEST(StartUp, OffersTheLanguagesInTheWordsOfTheLocaleAndStoresTheChoice)
{
    StartBench bench;
    bench.expectChoice([&](QWidget& window) {
        std::string words;
        for (const auto& name : wordsOf("German Dutch English Spanish French"))
            words += find<QAbstractButton>(window, name).text().toStdString() + " ";
        EXPECT_EQ(words, "Allemande Néelandaise Anglais Espagnol Français ");
        click(window, "Dutch");
        click(window, "OK");
    });
    EXPECT_TRUE(bench.start(u"france"));
    EXPECT_EQ(bench.settings.values, (std::map<std::string, Text>{{"Parameter/ATMELpath", u"C:\\"},
                                                                  {"Parameter/Com_Port", u"1"},
                                                                  {"Parameter/Expert", u"0"},
                                                                  {"Parameter/Language", u"2"},
                                                                  {"Parameter/Location", u""}}));
    EXPECT_EQ(bench.state.texts.menuCaption(1), Text(u"Bestand"));
}

TEST(StartUp, AsksAgainWhenNonsenseIsStored)
{
    StartBench bench(u"9");
    bench.expectChoice(clicking("OK"));
    EXPECT_TRUE(bench.start());
    EXPECT_NE(bench.stored(), Text(u"9"));
}

TEST(StartUp, TakesTheLanguageThatIsStoredOrAskedFor)
{
    const struct {
        TextView stored;
        std::optional<LanguageCode> wanted;
        Text file; // of the menu
        Text storedThen;
    } cases[] = {
        {u"4", std::nullopt, u"Archivo", u"4"},
        {u"4", LanguageCode::dutch, u"Bestand", u"2"},
        {u"", LanguageCode::dutch, u"Bestand", u"2"},
    };
    for (const auto& [stored, wanted, file, storedThen] : cases) {
        StartBench bench(stored);
        EXPECT_TRUE(bench.start(u"DEU", {wanted, {}}));
        EXPECT_EQ(bench.state.texts.menuCaption(1), file);
        EXPECT_EQ(bench.stored(), storedThen);
    }
}

TEST(StartUp, SaysOnceThatNothingCanBeStored)
{
    StartBench bench(u"3");
    bench.settings.unwritable = u"/etc/Karvo.conf";
    bench.driver.expectBox(
        QStringLiteral(
            "The settings cannot be stored: /etc/Karvo.conf. What you choose now, language and port "
            "included, lasts until the program ends only. To keep it, you need the right to write "
            "there."),
        QStringLiteral("OK"));
    EXPECT_TRUE(bench.start());
}

TEST(StartUp, EndsWithoutALanguageOrItsFile)
{
    for (const std::function<void(QWidget&)>& leave : {clicking("Cancel"), std::function(closeIt)}) {
        StartBench bench;
        bench.expectChoice(leave);
        bench.driver.expectBox(
            QStringLiteral("Programm wird beendet !\r\n\r\nProgramma sluit !\r\n\r\nProgram "
                           "will be closed !"),
            QStringLiteral("OK"));
        EXPECT_FALSE(bench.start());
        EXPECT_TRUE(bench.prompts.hasEnded());
        EXPECT_EQ(bench.stored(), Text());
    }
    StartBench bench(u"5");
    bench.state.programFolder = KARVO_SOURCE_FOLDER;
    bench.driver.expectBox(QStringLiteral("File [Franz_var.txt] not available !\r\nSet language to German."
                                          "\r\n\r\nProgram will be closed"),
                           QStringLiteral("OK"));
    EXPECT_FALSE(bench.start());
    EXPECT_TRUE(bench.prompts.hasEnded());
}

} // namespace karvo::test
