// The window itself: its controls, its language, what it remembers.
#include "shell/window_bench.h"

#include <QAccessible>
#include <QCheckBox>
#include <QHelpEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>

namespace karvo::test
{

namespace
{

const QString ok = QStringLiteral("OK");

constexpr const char* controlNames[] = {
    "COM",
    "Start",
    "List1",
    "CV_Nummer",
    "CV_Wert",
    "CV_Fabrik",
    "Enter_Taste",
    "Einzelne_speichern",
    "Alle_speichern",
    "Check1",
    "Check2",
    "Check4",
    "Check8",
    "Check16",
    "Check32",
    "Check64",
    "Check128",
    "Errechneter_Wert",
    "Grenzwert",
    "Bezeichnung",
    "Zusatz_Text",
    "var_Text",
    "Text1",
    "DCC1",
    "DCC2",
    "Programm_Kennung",
    "Adresse",
    "Servo_Addr",
    "Status",
};

std::string accessibleNameOf(QWidget& widget)
{
    const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&widget);
    return face == nullptr ? std::string() : face->text(QAccessible::Name).toStdString();
}

} // namespace

TEST(Hauptform, HasEveryControlUnderItsName)
{
    WindowBench bench;
    EXPECT_EQ(bench.window->objectName().toStdString(), "Hauptform");
    for (const char* name : controlNames)
        EXPECT_EQ(bench.window->findChildren<QWidget*>(QString::fromLatin1(name)).size(), 1) << name;
    const struct {
        const char* name;
        int interval;
    } timers[] = {{"Timer2", 750}, {"Timer3", 100}, {"Timer4", 200}};
    for (const auto& [name, interval] : timers) {
        EXPECT_EQ(bench.find<QTimer>(name).interval(), interval) << name;
        EXPECT_FALSE(bench.find<QTimer>(name).isActive()) << name;
    }
}

TEST(Hauptform, OffersThirtyOnePorts)
{
    WindowBench bench;
    auto& ports = bench.find<QComboBox>("COM");
    ASSERT_EQ(ports.count(), 31);
    EXPECT_EQ(ports.itemText(0).toStdString(), "COM1");
    EXPECT_EQ(ports.itemText(30).toStdString(), "COM31");
    EXPECT_EQ(ports.currentText().toStdString(), "COM5");
}

TEST(Hauptform, ChoosingAPortStoresItAndClosesTheOldOne)
{
    WindowBench bench;
    ASSERT_FALSE(bench.port.open());
    bench.find<QComboBox>("COM").setCurrentIndex(11);
    EXPECT_EQ(bench.state.link.portNumber, 12);
    EXPECT_EQ(bench.port.portNumber(), 12);
    EXPECT_FALSE(bench.port.isOpen());
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"12"));
}

TEST(Hauptform, TellsTheDeviceOfAPortInItsToolTip)
{
    WindowBench bench;
    auto& ports = bench.find<QComboBox>("COM");
    ports.setCurrentIndex(1);
    QHelpEvent asked(QEvent::ToolTip, QPoint(1, 1), ports.mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&ports, &asked);
    EXPECT_EQ(ports.toolTip().toStdString(), "Gerät /dev/ttyUSB0: USB Serial");
    EXPECT_EQ(ports.itemData(0, Qt::ToolTipRole).toString().toStdString(), "/dev/ttyS0");
}

TEST(Hauptform, SaysBesideThePortThatNothingIsPluggedIn)
{
    WindowBench bench;
    auto& note = bench.find<QLabel>("COM_Note");
    EXPECT_FALSE(note.isVisible());
    bench.devices[1].isAbsent = true;
    bench.find<QComboBox>("COM").setCurrentIndex(1);
    EXPECT_TRUE(note.isVisible());
    EXPECT_EQ(note.text().toStdString(), "COM2 ist nicht angesteckt");
    EXPECT_EQ(bench.find<QComboBox>("COM").accessibleDescription(), note.text());
    bench.devices[1].isAbsent = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !note.isVisible(); })) << "found as soon as it is there";
}

TEST(Hauptform, HasItsDesignCaptionsInGerman)
{
    WindowBench bench;
    EXPECT_EQ(bench.window->windowTitle().toStdString(), "Karvo Decoder Daten einlesen");
    EXPECT_EQ(bench.find<QPushButton>("Start").text().toStdString(), "Alle CVs einlesen");
    EXPECT_EQ(bench.find<QPushButton>("Einzelne_speichern").text().toStdString(),
              "Diese CV in den Decoder speichern");
    EXPECT_EQ(bench.find<QPushButton>("Alle_speichern").text().toStdString(),
              "Alle geänderten CVs in den Decoder speichern");
    EXPECT_EQ(bench.text("DCC1_Label"), "DCC Adresse 1:");
    EXPECT_EQ(bench.text("DCC2_Label"), "DCC Adresse 2:");
}

TEST(Hauptform, SpeaksEveryLanguageOnEveryControl)
{
    std::map<std::string, std::string> german;
    for (const LanguageCode code : allLanguages) {
        BenchSetup setup;
        setup.language = code;
        WindowBench bench(setup);
        for (const char* name : {"Start", "Enter_Taste", "Einzelne_speichern", "Alle_speichern", "Servo_Addr",
                                 "Zuruecknehmen", "Alle_zuruecknehmen", "Anhalten"}) {
            const auto text = bench.find<QPushButton>(name).text().toStdString();
            EXPECT_FALSE(text.empty()) << name;
            if (code == LanguageCode::german)
                german[name] = text;
            else
                EXPECT_NE(text, german[name]) << name;
        }
        for (const char* name :
             {"COM_Label", "CV_Nummer_Label", "CV_Wert_Label", "CV_Fabrik_Label", "Grenzwert_Label",
              "Errechneter_Wert_Label", "DCC1_Label", "DCC2_Label", "Programm_Kennung", "Adresse", "Status"})
            EXPECT_FALSE(bench.text(name).empty()) << name;
        for (const char* name : {"COM", "Start", "List1", "CV_Nummer", "CV_Wert", "CV_Fabrik", "Enter_Taste",
                                 "Check1", "Check128", "Errechneter_Wert", "DCC1", "DCC2"})
            EXPECT_FALSE(accessibleNameOf(bench.find<QWidget>(name)).empty()) << name;
        EXPECT_FALSE(bench.list().accessibleDescription().isEmpty()) << "how to begin";
    }
}

TEST(Hauptform, SaysWhyTheServosHaveNoAddresses)
{
    WindowBench bench;
    auto& button = bench.find<QPushButton>("Servo_Addr");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), bench.message(Message::editorNeedsList));
    bench.showOfflineList();
    EXPECT_TRUE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), QString());
    bench.state.set.profile.model = Model::kv05;
    bench.view.listChanged();
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.toolTip().startsWith(QStringLiteral("Das gibt es nur bei KV07")));
}

TEST(Hauptform, ChangesTheLanguageAtOnceAndKeepsTheValues)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.state.set.table.setValue(2, 77);
    bench.chooseCv(2);
    EXPECT_EQ(bench.text("Bezeichnung"), "deutsch two");
    bench.item("mnu_english").trigger();
    EXPECT_EQ(bench.settings.values["Parameter/Language"], Text(u"3"));
    EXPECT_EQ(bench.text("Bezeichnung"), "english two");
    EXPECT_EQ(bench.text("Zusatz_Text"), "explains english\r\nsecond line");
    EXPECT_EQ(bench.field("CV_Nummer"), "2");
    EXPECT_EQ(bench.field("CV_Wert"), "77");
    EXPECT_EQ(bench.list().currentItem()->text().toStdString(), "CV2  = 77  changed");
    EXPECT_EQ(bench.find<QPushButton>("Start").text().toStdString(), "Read all CVs");
    EXPECT_EQ(bench.item("mnu_datei").text().toStdString(), "File");
    EXPECT_EQ(bench.text("Status"), "Ready");
}

TEST(Hauptform, EndsOverALanguageFileThatHasGone)
{
    WindowBench bench;
    bench.files.content.erase(bench.state.programFolder / "English_cap.txt");
    bench.driver.expectBox(QStringLiteral("File [English_cap.txt] not available !\r\nSet language to German."
                                          "\r\n\r\nProgram will be closed"),
                           ok);
    bench.item("mnu_english").trigger();
    EXPECT_TRUE(bench.prompts.hasEnded());
}

TEST(Hauptform, SaysWhatItIs)
{
    WindowBench bench;
    bench.driver.expectBox(QStringLiteral("Sie arbeiten mit der Version V01_23."), ok);
    bench.item("mnu_version").trigger();
    bench.driver.expect(QStringLiteral("about"), [](QWidget& window) {
        const auto text = dynamic_cast<QMessageBox&>(window).text();
        EXPECT_TRUE(text.contains(QStringLiteral("MIT"))) << text.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("V01_23"))) << text.toStdString();
        EXPECT_EQ(text.count(QStringLiteral("\r\n")), 4);
        window.close();
    });
    bench.item("mnu_about").trigger();
    bench.driver.expect(QStringLiteral("help"), [](QWidget& window) { window.close(); });
    bench.press(Qt::Key_F1);
    EXPECT_TRUE(bench.driver.isDone());
}

TEST(Hauptform, SaysThatTheInterfaceIsSimulated)
{
    BenchSetup setup;
    setup.simulatedInterface = true;
    WindowBench demo(setup);
    EXPECT_EQ(demo.text("Simulation"), "Simuliertes Interface");
    WindowBench real;
    EXPECT_EQ(real.window->findChild<QLabel*>(QStringLiteral("Simulation")), nullptr);
}

TEST(Hauptform, RemembersItsPlace)
{
    WindowBench bench;
    bench.window->resize(901, 603);
    bench.item("mnu_exit").trigger();
    EXPECT_FALSE(bench.window->isVisible());
    Hauptform again(MainWindowSetup{.bench = bench.bench,
                                    .view = bench.view,
                                    .listPortDevices = {},
                                    .clock = bench.clock,
                                    .archive = bench.archive,
                                    .downloader = bench.downloader,
                                    .keepBackup = {}});
    EXPECT_EQ(again.size(), QSize(901, 603));
    bench.settings.values["Window/Geometry"] = u"nonsense";
    bench.settings.values["Window/Splitter"] = u"%%%";
    const Hauptform usual(MainWindowSetup{.bench = bench.bench,
                                          .view = bench.view,
                                          .listPortDevices = {},
                                          .clock = bench.clock,
                                          .archive = bench.archive,
                                          .downloader = bench.downloader,
                                          .keepBackup = {}});
    EXPECT_NE(usual.size(), QSize(901, 603));
    EXPECT_GT(usual.width(), 300);
}

TEST(Hauptform, LetsTheKeyboardReachEverythingInReadingOrder)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(29);
    std::vector<std::string> order;
    auto* const start = bench.find<QComboBox>("COM").nextInFocusChain();
    for (QWidget* widget = start; order.empty() || widget != start; widget = widget->nextInFocusChain()) {
        const bool stop = widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && widget->isVisible();
        order.push_back(stop ? widget->objectName().toStdString() : std::string());
    }
    std::erase(order, std::string());
    EXPECT_EQ(order, (std::vector<std::string>{"Start", "Servo_Addr", "List1", "CV_Nummer", "CV_Wert",
                                               "Enter_Taste", "CV_Fabrik", "Bezeichnung", "Check8", "Check2",
                                               "Check1", "Zusatz_Text", "var_Text", "Einzelne_speichern",
                                               "Alle_speichern", "Hinweis_nach_Schreiben", "COM"}))
        << "without the bits that mean nothing";
}

TEST(Hauptform, GivesTheTextsOfAnotherLanguageTheWidthTheyNeed)
{
    WindowBench bench;
    bench.window->resize(1180, 760);
    bench.showOfflineList();
    const auto& area = bench.find<QScrollArea>("CurrentCvArea");
    for (const char* item : {"mnu_franz", "mnu_dutch", "mnu_spanisch"}) {
        bench.item(item).trigger();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return area.viewport()->width() >= area.widget()->minimumSizeHint().width();
        })) << item;
    }
}

TEST(Hauptform, BeginsWithTheKeyboardOnStart)
{
    WindowBench bench;
    bench.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(bench.window.get()));
    EXPECT_EQ(bench.window->focusWidget(), &bench.find<QPushButton>("Start"));
}

TEST(Hauptform, FitsASmallScreenInTheLongestLanguage)
{
    for (const LanguageCode code : allLanguages) {
        BenchSetup setup;
        setup.language = code;
        WindowBench bench(setup);
        bench.showOfflineList();
        const QSize needed = bench.window->minimumSizeHint();
        EXPECT_LE(needed.width(), 1366 / 2) << static_cast<int>(code);
        EXPECT_LE(needed.height(), 768 / 2) << static_cast<int>(code);
    }
}

} // namespace karvo::test
