// The window itself: its controls, its language, what it remembers, and the editors that it opens.
#include "shell/window_bench.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTimer>

namespace karvo::test
{

TEST(Hauptform, StoresTheChosenPortAndSaysWhatIsPluggedInThere)
{
    WindowBench bench;
    auto& ports = bench.find<QComboBox>("COM");
    ASSERT_EQ(ports.count(), 31);
    EXPECT_EQ(ports.currentText().toStdString(), "COM5");
    ASSERT_FALSE(bench.port.open());
    ports.setCurrentIndex(1);
    EXPECT_EQ(bench.state.link.portNumber, 2);
    EXPECT_EQ(bench.port.portNumber(), 2);
    EXPECT_FALSE(bench.port.isOpen());
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"2"));

    QHelpEvent asked(QEvent::ToolTip, QPoint(1, 1), ports.mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&ports, &asked);
    EXPECT_EQ(ports.toolTip().toStdString(), "Gerät /dev/ttyUSB0: USB Serial");
    EXPECT_EQ(ports.itemData(0, Qt::ToolTipRole).toString().toStdString(), "/dev/ttyS0");
    const auto& note = bench.find<QLabel>("COM_Note");
    EXPECT_FALSE(note.isVisible());
    bench.devices[1].isAbsent = true;
    ports.setCurrentIndex(0);
    ports.setCurrentIndex(1);
    EXPECT_TRUE(note.isVisible());
    EXPECT_EQ(note.text().toStdString(), "COM2 ist nicht angesteckt");
    bench.devices[1].isAbsent = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !note.isVisible(); })) << "found as soon as it is there";
}

TEST(Hauptform, SpeaksEveryLanguageOnEveryControlAndFitsASmallScreen)
{
    std::map<QString, QString> german;
    for (const LanguageCode code : allLanguages) {
        WindowBench bench({.language = code, .simulatedInterface = true});
        for (const auto* button : bench.window->findChildren<QPushButton*>()) {
            const auto& inGerman = german.emplace(button->objectName(), button->text()).first->second;
            EXPECT_EQ(inGerman == button->text(), code == LanguageCode::german) << inGerman.toStdString();
        }
        const QRegularExpression captions(QStringLiteral("_Label$|^(Adresse|Simulation|Status)$"));
        for (const auto* label : bench.window->findChildren<QLabel*>(captions))
            EXPECT_FALSE(label->text().isEmpty()) << label->objectName().toStdString();
        for (const auto& name : wordsOf("COM Start List1 CV_Nummer CV_Wert CV_Fabrik Enter_Taste Check1 "
                                        "Check128 Errechneter_Wert DCC1 DCC2")) {
            const auto* const voice = QAccessible::queryAccessibleInterface(&bench.find<QWidget>(name));
            EXPECT_FALSE(voice == nullptr || voice->text(QAccessible::Name).isEmpty()) << name;
        }
        EXPECT_FALSE(bench.list().accessibleDescription().isEmpty()) << "how to begin";
        bench.showOfflineList();
        const QSize needed = bench.window->minimumSizeHint();
        EXPECT_TRUE(needed.width() <= 1366 / 2 && needed.height() <= 768 / 2) << static_cast<int>(code);
    }
}

TEST(Hauptform, ChangesTheLanguageAtOnceAndKeepsTheValues)
{
    WindowBench bench;
    bench.window->resize(1180, 760);
    bench.showOfflineList();
    bench.change(2, 77);
    bench.choose("mnu_english");
    EXPECT_EQ(bench.settings.values["Parameter/Language"], Text(u"3"));
    EXPECT_EQ(bench.texts("Zusatz_Text Status"), "explains english\r\nsecond line|Ready|");
    EXPECT_EQ(bench.line() + "|" + bench.field("CV_Wert"), "CV2  = 77  changed|77");
    EXPECT_EQ(bench.find<QPushButton>("Start").text().toStdString(), "Read all CVs");
    const auto& area = bench.find<QScrollArea>("CurrentCvArea");
    const auto hasWidth = [&] {
        return area.viewport()->width() >= area.widget()->minimumSizeHint().width();
    };
    for (const char* longer : {"mnu_franz", "mnu_dutch", "mnu_spanisch"}) {
        bench.choose(longer);
        EXPECT_TRUE(QTest::qWaitFor(hasWidth)) << longer;
    }
}

TEST(Hauptform, SaysWhatItIsAndRemembersItsPlace)
{
    WindowBench bench;
    EXPECT_EQ(bench.window->objectName().toStdString(), "Hauptform");
    for (const auto& [name, interval] : {std::pair{"Timer2", 750}, {"Timer3", 100}, {"Timer4", 200}})
        EXPECT_TRUE(bench.find<QTimer>(name).interval() == interval && !bench.find<QTimer>(name).isActive());
    bench.expectBoxWith("Sie arbeiten mit der Version V01_23.");
    bench.choose("mnu_version");
    bench.expectBoxWith("MIT");
    bench.choose("mnu_about");
    bench.expect("help");
    bench.press(Qt::Key_F1);
    bench.window->resize(901, 603);
    bench.choose("mnu_exit");
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(Hauptform(bench.windowSetup()).size(), QSize(901, 603));
    bench.settings.values["Window/Geometry"] = u"nonsense";
    EXPECT_NE(Hauptform(bench.windowSetup()).size(), QSize(901, 603));
}

TEST(Hauptform, LetsTheKeyboardReachEverythingInReadingOrder)
{
    WindowBench bench;
    bench.activate();
    EXPECT_TRUE(bench.hasFocus("Start"));
    bench.showOfflineList();
    bench.chooseCv(29);
    std::string order;
    const QWidget* widget = &bench.find<QComboBox>("COM");
    do {
        widget = widget->nextInFocusChain();
        if (widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && widget->isVisible())
            order += widget->objectName().toStdString() + " ";
    } while (widget != &bench.find<QComboBox>("COM"));
    EXPECT_EQ(order,
              "Start Servo_Addr List1 CV_Nummer CV_Wert Enter_Taste CV_Fabrik Bezeichnung Check8 Check2 "
              "Check1 Zusatz_Text var_Text Einzelne_speichern Alle_speichern Hinweis_nach_Schreiben COM ")
        << "without the bits that mean nothing";
}

TEST(Hauptform, OpensTheEditorsAndPresetsOfTheVehicle)
{
    WindowBench bench;
    const auto& servos = bench.find<QPushButton>("Servo_Addr");
    EXPECT_TRUE(!servos.isEnabled() && servos.toolTip() == bench.message(Message::editorNeedsList));
    bench.showOfflineList();
    EXPECT_TRUE(servos.isEnabled() && servos.toolTip().isEmpty());
    bench.files.content["fs/FS_Faller.fcr"] = bytesOf("K\r\n97;12;x\r\n70;140;x\r\n");
    bench.files.content["abs/Faller.bcr"] = bytesOf("K\r\n52;110;x;\r\n");
    bench.state.userFolders.speedSteps.own = "fs";
    bench.state.userFolders.distances.own = "abs";
    bench.choose("mnu_Eg_Faller");
    EXPECT_TRUE(bench.window->isWindowModified());
    EXPECT_EQ(bench.text("Status"), "3 CVs der Liste geändert: Faller");
    EXPECT_EQ(bench.lineOf(52), "CV52 = 52                [110]  geändert");
    bench.expectBox(Message::baseAndTopWritten);
    bench.choose("mnu_FS_Faller");
    EXPECT_TRUE(bench.held(2) == 12 && bench.held(5) == 140);
    for (const auto& [generation, name] :
         {std::pair{Generation::standard, "Fahrstufen"}, {Generation::f5, "FahrstufenF5"}}) {
        bench.state.set.profile.generation = generation;
        bench.expect(name, [name = name](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName().toStdString(), name);
            dialog.close();
        });
        bench.choose("mnu_fahrstufen");
    }
}

} // namespace karvo::test
