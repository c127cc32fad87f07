// The window itself: its controls, its language, what it remembers.
#include "shell/window_bench.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>

namespace karvo::test
{

TEST(Hauptform, HasEveryControlUnderItsName)
{
    WindowBench bench;
    EXPECT_EQ(bench.window->objectName().toStdString(), "Hauptform");
    for (const auto& name :
         wordsOf("COM Start List1 CV_Nummer CV_Wert CV_Fabrik Enter_Taste Einzelne_speichern "
                 "Alle_speichern Check1 Check2 Check4 Check8 Check16 Check32 Check64 Check128 "
                 "Errechneter_Wert Grenzwert Bezeichnung Zusatz_Text var_Text Text1 DCC1 DCC2 "
                 "Programm_Kennung Adresse Servo_Addr Status"))
        EXPECT_EQ(bench.window->findChildren<QWidget*>(QString::fromStdString(name)).size(), 1) << name;
    for (const auto& [name, interval] : {std::pair{"Timer2", 750}, {"Timer3", 100}, {"Timer4", 200}}) {
        EXPECT_EQ(bench.find<QTimer>(name).interval(), interval) << name;
        EXPECT_FALSE(bench.find<QTimer>(name).isActive()) << name;
    }
    EXPECT_EQ(bench.window->findChild<QLabel*>(QStringLiteral("Simulation")), nullptr);
    WindowBench simulated({.simulatedInterface = true});
    EXPECT_EQ(simulated.text("Simulation"), "Simuliertes Interface");
}

TEST(Hauptform, StoresTheChosenPortAndSaysWhatIsPluggedInThere)
{
    WindowBench bench;
    auto& ports = bench.find<QComboBox>("COM");
    ASSERT_EQ(ports.count(), 31);
    EXPECT_EQ(ports.itemText(30).toStdString(), "COM31");
    EXPECT_EQ(ports.currentText().toStdString(), "COM5");
    ASSERT_FALSE(bench.port.open());
    ports.setCurrentIndex(11);
    EXPECT_EQ(bench.state.link.portNumber, 12);
    EXPECT_EQ(bench.port.portNumber(), 12);
    EXPECT_FALSE(bench.port.isOpen());
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"12"));

    ports.setCurrentIndex(1);
    QHelpEvent asked(QEvent::ToolTip, QPoint(1, 1), ports.mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&ports, &asked);
    EXPECT_EQ(ports.toolTip().toStdString(), "Gerät /dev/ttyUSB0: USB Serial");
    EXPECT_EQ(ports.itemData(0, Qt::ToolTipRole).toString().toStdString(), "/dev/ttyS0");

    auto& note = bench.find<QLabel>("COM_Note");
    EXPECT_FALSE(note.isVisible());
    bench.devices[1].isAbsent = true;
    ports.setCurrentIndex(0);
    ports.setCurrentIndex(1);
    EXPECT_TRUE(note.isVisible());
    EXPECT_EQ(note.text().toStdString(), "COM2 ist nicht angesteckt");
    EXPECT_EQ(ports.accessibleDescription(), note.text());
    bench.devices[1].isAbsent = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !note.isVisible(); })) << "found as soon as it is there";
}

TEST(Hauptform, SpeaksEveryLanguageOnEveryControlAndFitsASmallScreen)
{
    std::map<std::string, std::string> german;
    for (const LanguageCode code : allLanguages) {
        WindowBench bench({.language = code});
        for (const auto& name : wordsOf("Start Enter_Taste Einzelne_speichern Alle_speichern Servo_Addr "
                                        "Zuruecknehmen Alle_zuruecknehmen Anhalten")) {
            const auto text = bench.find<QPushButton>(name).text().toStdString();
            EXPECT_FALSE(text.empty()) << name;
            EXPECT_EQ(german.emplace(name, text).first->second == text, code == LanguageCode::german) << name;
        }
        for (const auto& name :
             wordsOf("COM_Label CV_Nummer_Label CV_Wert_Label CV_Fabrik_Label Grenzwert_Label "
                     "Errechneter_Wert_Label DCC1_Label DCC2_Label Programm_Kennung Adresse "
                     "Status"))
            EXPECT_FALSE(bench.text(name).empty()) << name;
        for (const auto& name :
             wordsOf("COM Start List1 CV_Nummer CV_Wert CV_Fabrik Enter_Taste Check1 Check128 "
                     "Errechneter_Wert DCC1 DCC2")) {
            const auto* const voice = QAccessible::queryAccessibleInterface(&bench.find<QWidget>(name));
            EXPECT_FALSE(voice == nullptr || voice->text(QAccessible::Name).isEmpty()) << name;
        }
        EXPECT_FALSE(bench.list().accessibleDescription().isEmpty()) << "how to begin";
        bench.showOfflineList();
        const QSize needed = bench.window->minimumSizeHint();
        EXPECT_LE(needed.width(), 1366 / 2) << static_cast<int>(code);
        EXPECT_LE(needed.height(), 768 / 2) << static_cast<int>(code);
    }
}

TEST(Hauptform, SaysWhyTheServosHaveNoAddresses)
{
    WindowBench bench;
    auto& button = bench.find<QPushButton>("Servo_Addr");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), bench.message(Message::editorNeedsList));
    bench.showOfflineList();
    EXPECT_TRUE(button.isEnabled() && button.toolTip().isEmpty());
    bench.state.set.profile.model = Model::kv05;
    bench.view.listChanged();
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.toolTip().startsWith(QStringLiteral("Das gibt es nur bei KV07")));
}

TEST(Hauptform, ChangesTheLanguageAtOnceAndKeepsTheValues)
{
    WindowBench bench;
    bench.window->resize(1180, 760);
    bench.showOfflineList();
    bench.state.set.table.setValue(2, 77);
    bench.chooseCv(2);
    EXPECT_EQ(bench.text("Bezeichnung"), "deutsch two");
    bench.choose("mnu_english");
    EXPECT_EQ(bench.settings.values["Parameter/Language"], Text(u"3"));
    EXPECT_EQ(bench.text("Zusatz_Text"), "explains english\r\nsecond line");
    EXPECT_EQ(bench.field("CV_Nummer") + " " + bench.field("CV_Wert"), "2 77");
    EXPECT_EQ(bench.line(), "CV2  = 77  changed");
    EXPECT_EQ(bench.find<QPushButton>("Start").text().toStdString(), "Read all CVs");
    EXPECT_EQ(bench.item("mnu_datei").text().toStdString(), "File");
    EXPECT_EQ(bench.text("Status"), "Ready");
    // Longer texts are given the width that they need.
    const auto& area = bench.find<QScrollArea>("CurrentCvArea");
    for (const char* item : {"mnu_franz", "mnu_dutch", "mnu_spanisch"}) {
        bench.choose(item);
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return area.viewport()->width() >= area.widget()->minimumSizeHint().width();
        })) << item;
    }
    bench.files.content.erase(bench.state.programFolder / "English_cap.txt");
    bench.expectBoxWith("File [English_cap.txt] not available !");
    bench.choose("mnu_english");
    EXPECT_TRUE(bench.prompts.hasEnded());
}

TEST(Hauptform, SaysWhatItIs)
{
    WindowBench bench;
    bench.expectBoxWith("Sie arbeiten mit der Version V01_23.");
    bench.choose("mnu_version");
    bench.expect("about", [](QWidget& window) {
        const auto text = dynamic_cast<QMessageBox&>(window).text();
        EXPECT_TRUE(text.contains(QStringLiteral("MIT"))) << text.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("V01_23"))) << text.toStdString();
        EXPECT_EQ(text.count(QStringLiteral("\r\n")), 4);
        window.close();
    });
    bench.choose("mnu_about");
    bench.expect("help");
    bench.press(Qt::Key_F1);
    EXPECT_TRUE(bench.driver.isDone());
}

TEST(Hauptform, RemembersItsPlace)
{
    WindowBench bench;
    bench.window->resize(901, 603);
    bench.choose("mnu_exit");
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(Hauptform(bench.windowSetup()).size(), QSize(901, 603));
    bench.settings.values["Window/Geometry"] = u"nonsense";
    bench.settings.values["Window/Splitter"] = u"%%%";
    const Hauptform usual(bench.windowSetup());
    EXPECT_NE(usual.size(), QSize(901, 603));
    EXPECT_GT(usual.width(), 300);
}

TEST(Hauptform, LetsTheKeyboardReachEverythingInReadingOrder)
{
    WindowBench bench;
    bench.activate();
    EXPECT_EQ(bench.window->focusWidget(), &bench.find<QPushButton>("Start"));
    bench.showOfflineList();
    bench.chooseCv(29);
    std::string order;
    auto* const last = bench.find<QComboBox>("COM").nextInFocusChain();
    QWidget* widget = last;
    do {
        if (widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && widget->isVisible())
            order += widget->objectName().toStdString() + " ";
        widget = widget->nextInFocusChain();
    } while (widget != last);
    EXPECT_EQ(order,
              "Start Servo_Addr List1 CV_Nummer CV_Wert Enter_Taste CV_Fabrik Bezeichnung Check8 Check2 "
              "Check1 Zusatz_Text var_Text Einzelne_speichern Alle_speichern Hinweis_nach_Schreiben COM ")
        << "without the bits that mean nothing";
}

} // namespace karvo::test
