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
    const struct {
        TextView country;
        std::vector<std::string> captions;
    } cases[] = {
        {u"DEU", {"Deutsch", "Niederländisch", "Englisch", "Spanisch", "Französisch"}},
        {u"nld", {"Duitse", "Nederlands", "Engels", "Spain", "France"}},
        {u"ESP", {"German", "Dutch", "English", "Spain", "France"}},
        {u"spain", {"Duitse", "Nederlands", "Engels", "Spaanse taal", "Franse taal"}},
        {u"france", {"Allemande", "Néelandaise", "Anglais", "Espagnol", "Français"}},
    };
    for (const auto& [country, captions] : cases) {
        StartBench bench;
        bench.driver.expect(QStringLiteral("Language"), [&expected = captions](QWidget& window) {
            EXPECT_EQ(window.objectName().toStdString(), "Language");
            for (std::size_t i = 0; i < expected.size(); ++i)
                EXPECT_EQ(find<QRadioButton>(window, buttonNames[i]).text().toStdString(), expected[i]);
            find<QRadioButton>(window, "French").click();
            find<QPushButton>(window, "OK").click();
        });
        EXPECT_TRUE(startUp(bench.bench, FixedLocale(Text(country))));
        EXPECT_EQ(bench.state.language, LanguageCode::french);
    }
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

TEST(StartUp, AsksNothingWhenALanguageIsStored)
{
    StartBench bench;
    bench.settings.values["Parameter/Language"] = u"4";
    EXPECT_TRUE(startUp(bench.bench, FixedLocale(u"DEU")));
    EXPECT_EQ(bench.state.texts.menuCaption(1), Text(u"Archivo"));
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
