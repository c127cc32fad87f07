#include "shell/start_up.h"

#include "platform/qt_files.h"
#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "shell/main_window_view.h"
#include "support/memory_files.h"
#include "support/modal_driver.h"
#include "ui/window_prompts.h"

#include <QPushButton>
#include <QRadioButton>

namespace karvo
{

namespace
{

class FixedLocale : public LocaleInfo
{
public:
    explicit FixedLocale(Text country) : country_(std::move(country)) {}
    Text countryAbbreviation() const override { return country_; }

private:
    Text country_;
};

struct StartBench {
    QtFiles files;
    test::MemorySettings settings;
    QtWait wait;
    SimulatedPort port{sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none), 1};
    ProgramState state;
    WindowPrompts prompts{state.texts, [this] { wait.endProgram(); }};
    MainWindowView view;
    Workbench bench{state, port, wait, prompts, view, files, settings};
    test::ModalDriver driver;

    StartBench() { state.programFolder = KARVO_PROGRAM_FOLDER; }

    std::map<std::string, Text> parameters() const { return settings.values; }
};

template <typename Control>
Control& find(QWidget& window, const char* name)
{
    auto* const control = window.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr)
        throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

constexpr const char* buttonNames[] = {"German", "Dutch", "English", "Spanish", "French"};

const QString goodbye =
    QStringLiteral("Programm wird beendet !\r\n\r\nProgramma sluit !\r\n\r\nProgram will be closed !");

} // namespace

TEST(StartUp, OffersTheLanguagesInTheWordsOfTheLocale)
{
    const std::vector<std::string> expected{"Allemande", "Néelandaise", "Anglais", "Espagnol", "Français"};
    StartBench bench;
    bench.driver.expect(QStringLiteral("Language"), [&](QWidget& window) {
        EXPECT_EQ(window.objectName().toStdString(), "Language");
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(find<QRadioButton>(window, buttonNames[i]).text().toStdString(), expected[i]);
        find<QRadioButton>(window, "French").click();
        find<QPushButton>(window, "OK").click();
    });
    EXPECT_TRUE(startUp(bench.bench, FixedLocale(u"france")));
    EXPECT_EQ(bench.state.language, LanguageCode::french);
}

TEST(StartUp, StoresTheFirstChoiceAndLoadsIt)
{
    StartBench bench;
    bench.driver.expect(QStringLiteral("Language"), [](QWidget& window) {
        find<QRadioButton>(window, "Dutch").click();
        find<QPushButton>(window, "OK").click();
    });
    EXPECT_TRUE(startUp(bench.bench, FixedLocale(u"DEU")));
    EXPECT_EQ(bench.parameters(), (std::map<std::string, Text>{{"Parameter/ATMELpath", u"C:\\"},
                                                               {"Parameter/Com_Port", u"1"},
                                                               {"Parameter/Expert", u"0"},
                                                               {"Parameter/Language", u"2"},
                                                               {"Parameter/Location", u""}}));
    EXPECT_EQ(bench.state.texts.menuCaption(1), Text(u"Bestand"));
}

TEST(StartUp, TakesTheLanguageThatIsStoredOrAskedFor)
{
    const struct {
        Text stored;
        std::optional<LanguageCode> wanted;
        Text file; // of the menu
        Text storedThen;
    } cases[] = {
        {u"4", std::nullopt, u"Archivo", u"4"},
        {u"4", LanguageCode::dutch, u"Bestand", u"2"},
        {u"", LanguageCode::dutch, u"Bestand", u"2"},
    };
    for (const auto& [stored, wanted, file, storedThen] : cases) {
        StartBench bench;
        bench.settings.values["Parameter/Language"] = stored;
        EXPECT_TRUE(startUp(bench.bench, FixedLocale(u"DEU"), {wanted, {}}));
        EXPECT_EQ(bench.state.texts.menuCaption(1), file);
        EXPECT_EQ(bench.parameters()["Parameter/Language"], storedThen);
    }
}

TEST(StartUp, SaysOnceThatNothingCanBeStored)
{
    StartBench bench;
    bench.settings.values["Parameter/Language"] = u"3";
    bench.settings.unwritable = u"/etc/Karvo.conf";
    bench.driver.expectBox(
        QStringLiteral(
            "The settings cannot be stored: /etc/Karvo.conf. What you choose now, language and port "
            "included, lasts until the program ends only. To keep it, you need the right to write "
            "there."),
        QStringLiteral("OK"));
    EXPECT_TRUE(startUp(bench.bench, FixedLocale(u"DEU")));
}

TEST(StartUp, AsksAgainWhenNonsenseIsStored)
{
    StartBench bench;
    bench.settings.values["Parameter/Language"] = u"9";
    bench.driver.expect(QStringLiteral("Language"),
                        [](QWidget& window) { find<QPushButton>(window, "OK").click(); });
    EXPECT_TRUE(startUp(bench.bench, FixedLocale(u"DEU")));
    EXPECT_NE(bench.parameters()["Parameter/Language"], Text(u"9"));
}

TEST(StartUp, EndsWithoutALanguage)
{
    const struct {
        const char* how;
        std::function<void(QWidget&)> leave;
    } cases[] = {
        {"cancel", [](QWidget& window) { find<QPushButton>(window, "Cancel").click(); }},
        {"closed", [](QWidget& window) { window.close(); }},
    };
    for (const auto& [how, leave] : cases) {
        SCOPED_TRACE(how);
        StartBench bench;
        bench.driver.expect(QStringLiteral("Language"), leave);
        bench.driver.expectBox(goodbye, QStringLiteral("OK"));
        EXPECT_FALSE(startUp(bench.bench, FixedLocale(u"DEU")));
        EXPECT_TRUE(bench.prompts.hasEnded());
        EXPECT_EQ(bench.parameters()["Parameter/Language"], Text());
    }
}

TEST(StartUp, NamesAMissingLanguageFileAndEnds)
{
    StartBench bench;
    bench.state.programFolder = KARVO_SOURCE_FOLDER;
    bench.settings.values["Parameter/Language"] = u"5";
    bench.driver.expectBox(QStringLiteral("File [Franz_var.txt] not available !\r\nSet language to German."
                                          "\r\n\r\nProgram will be closed"),
                           QStringLiteral("OK"));
    EXPECT_FALSE(startUp(bench.bench, FixedLocale(u"DEU")));
    EXPECT_TRUE(bench.prompts.hasEnded());
}

} // namespace karvo
