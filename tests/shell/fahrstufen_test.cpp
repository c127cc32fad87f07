#include "editors/forms/fahrstufen_f5.h"
#include "editors/forms/step_graph.h"

#include "form_bench.h"
#include "support/modal_driver.h"
#include "ui/captions.h"
#include "workbench/offline_list.h"

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace karvo::test
{
namespace
{

struct StepsBench : FormBench {
    StepsBench()
    {
        state.userFolders.speedSteps.own = "fs";
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        for (int step = 1; step <= 28; ++step)
            state.set.table.setValue(98 - step, 5 * step);
        journal.clear();
    }
    static int field(QWidget& window, int step)
    {
        return find<QLineEdit>(window, ("Text1_" + std::to_string(step - 1)).c_str()).text().toInt();
    }
    static void type(QWidget& window, const char* name, const char* typed)
    {
        auto& line = find<QLineEdit>(window, name);
        line.setFocus();
        line.clear();
        QTest::keyClicks(&line, QString::fromLatin1(typed));
        QTest::keyClick(&line, Qt::Key_Return);
    }
    int value(int cv) { return state.set.table.value(cv).value_or(-1); }
};

template <typename Window>
struct Shown {
    explicit Shown(Workbench& bench) : window(bench)
    {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    StepGraph& graph() { return find<StepGraph>(window, "p"); }
    Window window;
};

} // namespace

TEST(Fahrstufen, TakesOverOnlyWithItsButton)
{
    StepsBench bench;
    Shown<Fahrstufen> shown(bench.bench);
    EXPECT_EQ(bench.field(shown.window, 1), 5);
    EXPECT_EQ(bench.field(shown.window, 28), 140);
    bench.type(shown.window, "Text1_1", "12");
    EXPECT_EQ(bench.value(96), 10);
    find<QPushButton>(shown.window, "Uebernehmen").click();
    EXPECT_EQ(bench.value(96), 12);
    EXPECT_TRUE(bench.state.set.unsavedChanges);
    bench.type(shown.window, "Text1_1", "99");
    find<QPushButton>(shown.window, "Zuruecksetzen").click();
    EXPECT_EQ(bench.field(shown.window, 2), 12);
    find<QPushButton>(shown.window, "Abbrechen").click();
    EXPECT_FALSE(shown.window.isVisible()) << "nothing is lost";
}

TEST(Fahrstufen, AChangedCurveIsNotClosedWithoutAQuestion)
{
    StepsBench bench;
    ModalDriver driver; // begins by ending an event loop, which closes windows
    Shown<Fahrstufen> shown(bench.bench);
    const auto question = qtText(bench.state.texts.message(Message::discardQuestion));
    bench.type(shown.window, "Text1_1", "98");
    driver.expectBox(question, QStringLiteral("Weiter bearbeiten"));
    find<QPushButton>(shown.window, "Abbrechen").click();
    EXPECT_TRUE(shown.window.isVisible());
    find<QPushButton>(shown.window, "Zuruecksetzen").click();
    find<QLineEdit>(shown.window, "Text1_2").setFocus();
    QTest::keyClicks(&find<QLineEdit>(shown.window, "Text1_2"), QStringLiteral("7")); // not taken yet
    driver.expectBox(question, QStringLiteral("Verwerfen"));
    QTest::keyClick(&shown.window, Qt::Key_Escape);
    EXPECT_FALSE(shown.window.isVisible());
    EXPECT_EQ(bench.value(96), 10);
}

TEST(Fahrstufen, RefusesValuesOutsideTheLimitsOnce)
{
    for (const char* const wrong : {"169", "2", "x", "", "-5"}) {
        StepsBench bench;
        Shown<Fahrstufen> shown(bench.bench);
        bench.type(shown.window, "Text1_2", wrong);
        ASSERT_EQ(bench.journal.size(), 1U) << wrong;
        EXPECT_EQ(
            bench.journal[0],
            "message Fahrstufe 3 kann nur ganze Zahlen von 3 bis 168 annehmen. Bitte ändern Sie den Wert.");
        find<QPushButton>(shown.window, "Uebernehmen").click();
        EXPECT_EQ(bench.value(95), 15) << wrong;
    }
}

TEST(Fahrstufen, AValueBeyondTheLimitsThatStandsThereIsLeftAlone)
{
    StepsBench bench;
    bench.state.set.table.setValue(70, 200);
    Shown<Fahrstufen> shown(bench.bench);
    bench.type(shown.window, "Text1_0", "6");
    find<QPushButton>(shown.window, "Uebernehmen").click();
    EXPECT_EQ(bench.value(97), 6);
    EXPECT_EQ(bench.value(70), 200);
    EXPECT_EQ(bench.journal.size(), 2U) << "the list and the status, no message";
}

TEST(Fahrstufen, TheChosenStepHasAFieldOfItsOwn)
{
    StepsBench bench;
    Shown<Fahrstufen> shown(bench.bench);
    auto& steps = find<QComboBox>(shown.window, "Combo1");
    EXPECT_EQ(steps.count(), 28);
    EXPECT_EQ(steps.itemText(27), QStringLiteral("28"));
    steps.setFocus();
    QTest::keyClick(&steps, Qt::Key_Down);
    EXPECT_EQ(find<QLineEdit>(shown.window, "Text2").text(), QStringLiteral("10"));
    EXPECT_EQ(shown.graph().chosenStep(), 2);
    bench.type(shown.window, "Text2", "13");
    EXPECT_EQ(bench.field(shown.window, 2), 13);
    bench.type(shown.window, "Text1_1", "14");
    EXPECT_EQ(find<QLineEdit>(shown.window, "Text2").text(), QStringLiteral("14"));
}

TEST(Fahrstufen, BarsFollowMouseAndKeysWithinTheLimits)
{
    StepsBench bench;
    Shown<Fahrstufen> shown(bench.bench);
    StepGraph& graph = shown.graph();
    QTest::mousePress(&graph, Qt::LeftButton, {}, graph.endOfBar(14, 70));
    EXPECT_EQ(graph.chosenStep(), 14);
    EXPECT_EQ(bench.field(shown.window, 14), 70) << "a press alone changes nothing";
    QTest::mouseMove(&graph, graph.endOfBar(14, 100));
    EXPECT_NEAR(bench.field(shown.window, 14), 100, 1);
    QTest::mouseMove(&graph, graph.endOfBar(20, 0) + QPoint(0, 500));
    EXPECT_EQ(bench.field(shown.window, 14), 3);
    EXPECT_EQ(bench.field(shown.window, 20), 100) << "another bar is not touched";
    QTest::mouseRelease(&graph, Qt::LeftButton);
    graph.setFocus();
    QTest::keyClick(&graph, Qt::Key_Down);
    EXPECT_EQ(bench.field(shown.window, 14), 3);
    QTest::keyClick(&graph, Qt::Key_Up);
    QTest::keyClick(&graph, Qt::Key_PageUp);
    EXPECT_EQ(bench.field(shown.window, 14), 14);
    QTest::keyClick(&graph, Qt::Key_Right);
    QTest::keyClick(&graph, Qt::Key_Up);
    EXPECT_EQ(bench.field(shown.window, 15), 76);
    QTest::keyClick(&graph, Qt::Key_End);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&graph, Qt::Key_PageUp);
    EXPECT_EQ(bench.field(shown.window, 28), 168);
    QTest::keyClick(&graph, Qt::Key_Right);
    EXPECT_EQ(graph.chosenStep(), 28);
    find<QPushButton>(shown.window, "Uebernehmen").click();
    EXPECT_EQ(bench.value(84), 14);
    EXPECT_EQ(bench.value(70), 168);
}

TEST(Fahrstufen, TheGraphSpeaksItsChosenBar)
{
    StepsBench bench;
    Shown<Fahrstufen> shown(bench.bench);
    auto* const voice = QAccessible::queryAccessibleInterface(&shown.graph());
    ASSERT_NE(voice, nullptr);
    EXPECT_EQ(voice->text(QAccessible::Name).toStdString(), "Balkendiagramm der Fahrstufen");
    shown.graph().choose(3);
    EXPECT_EQ(voice->text(QAccessible::Value).toStdString(), "Fahrstufe 3: 15");
    auto* const value = voice->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toInt(), 15);
    EXPECT_EQ(value->maximumValue().toInt(), 168);
    value->setCurrentValue(20);
    EXPECT_EQ(bench.field(shown.window, 3), 20);
}

TEST(Fahrstufen, CurvesAreTriedAndTakenBack)
{
    struct Case {
        const char* item;
        std::vector<Text> answers;
        std::array<int, 3> values; // of steps 1, 14 and 28
    };
    const Case cases[] = {
        {"mnu_standart", {u"5", u"140"}, {5, 70, 140}}, // 70: 5 + 13 * 5
        {"mnu_E_FS1", {u"59"}, {59, 98, 140}},
        {"mnu_E_FS28", {u"59"}, {5, 31, 59}},
        {"mnu_E_FS1_28", {u"5", u"140"}, {5, 70, 140}},
        {"mnu_E_FS_1_14_28", {u"5", u"40", u"140"}, {5, 40, 140}},
        {"mnu_log", {u"3", u"168"}, {5, 22, 168}},
        {"mnu_expo", {u"3", u"168"}, {3, 146, 166}},
    };
    for (const Case& expected : cases) {
        StepsBench bench;
        Shown<Fahrstufen> shown(bench.bench);
        for (const Text& answer : expected.answers)
            bench.prompts.type(answer);
        find<QAction>(shown.window, expected.item).trigger();
        const std::array values = {bench.field(shown.window, 1), bench.field(shown.window, 14),
                                   bench.field(shown.window, 28)};
        EXPECT_EQ(values, expected.values) << expected.item;
        find<QPushButton>(shown.window, "Zuruecksetzen").click();
        EXPECT_EQ(bench.field(shown.window, 14), 70) << expected.item;
        EXPECT_EQ(bench.value(84), 70) << expected.item;
    }
    StepsBench bench;
    Shown<Fahrstufen> shown(bench.bench);
    bench.prompts.answer(false);
    find<QAction>(shown.window, "mnu_ueberhoeht").trigger();
    EXPECT_EQ(bench.field(shown.window, 28), 140);
    bench.prompts.answer(true);
    find<QAction>(shown.window, "mnu_ueberhoeht").trigger();
    EXPECT_EQ(bench.field(shown.window, 14), 39) << "5 and half of 13 * 135 / 26";
    EXPECT_EQ(bench.field(shown.window, 28), 168);
    find<QPushButton>(shown.window, "Uebernehmen").click();
    EXPECT_EQ(bench.value(84), 39);
}

TEST(Fahrstufen, TheGenerationF5HasItsOwnLimits)
{
    StepsBench bench;
    bench.state.set.profile.generation = Generation::f5;
    Shown<FahrstufenF5> shown(bench.bench);
    EXPECT_EQ(shown.window.objectName(), QStringLiteral("FahrstufenF5"));
    EXPECT_EQ(shown.graph().highest(), 120);
    bench.prompts.type(u"5");
    bench.prompts.type(u"81");
    bench.prompts.type(u"80");
    find<QAction>(shown.window, "mnu_standart").trigger();
    EXPECT_EQ(bench.field(shown.window, 28), 80) << "the linear curve goes up to 80";
    bench.prompts.type(u"5");
    bench.prompts.type(u"121");
    bench.prompts.type(u"120");
    find<QAction>(shown.window, "mnu_log").trigger();
    EXPECT_EQ(bench.field(shown.window, 28), 120);
}

TEST(Fahrstufen, ATableBringsItsBaseAndTopSpeed)
{
    StepsBench bench;
    std::string content = "K\r\n2;20;x\r\n5;130;x\r\n";
    for (int cv = 97; cv >= 70; --cv)
        content += std::to_string(cv) + ";" + std::to_string(107 - cv) + ";x\r\n";
    bench.files.content["fs/FS_CI26_24_CV2_CV5.fcr"] = bytesOf(content);
    Shown<Fahrstufen> shown(bench.bench);
    ModalDriver driver;
    driver.expect(QStringLiteral("tables"), [](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName().toStdString(), "Pre_Fahrstufen");
        EXPECT_EQ(dialog.findChildren<QRadioButton*>().size(), 4);
        find<QRadioButton>(dialog, "FS_CI46_12_CV2_CV5.fcr").setChecked(true);
        find<QPushButton>(dialog, "Laden").click(); // there is none: said, and another one can be chosen
        EXPECT_TRUE(dialog.isVisible());
        find<QRadioButton>(dialog, "FS_CI26_24_CV2_CV5.fcr").setChecked(true);
        find<QPushButton>(dialog, "Laden").click();
    });
    find<QAction>(shown.window, "mnu_tabelle").trigger();
    EXPECT_EQ(bench.journal.size(), 1U);
    EXPECT_EQ(bench.field(shown.window, 1), 10);
    EXPECT_EQ(bench.field(shown.window, 28), 37);
    EXPECT_EQ(bench.value(2), 1);
    find<QPushButton>(shown.window, "Uebernehmen").click();
    EXPECT_EQ(bench.value(2), 20);
    EXPECT_EQ(bench.value(5), 130);
    EXPECT_EQ(bench.value(97), 10);
}

TEST(Fahrstufen, InViewModeTheLastReplyIsShownAndNothingElse)
{
    StepsBench bench;
    bench.state.speedStepViews = 1;
    bench.state.link.lastReply = Bytes(28, 44);
    Shown<Fahrstufen> shown(bench.bench);
    EXPECT_EQ(bench.field(shown.window, 1), 44);
    EXPECT_FALSE(find<QPushButton>(shown.window, "Uebernehmen").isEnabled());
    EXPECT_FALSE(find<QAction>(shown.window, "mnu_tabelle").isEnabled());
    shown.graph().setFocus();
    QTest::keyClick(&shown.graph(), Qt::Key_Up);
    EXPECT_EQ(bench.field(shown.window, 1), 44);
    EXPECT_EQ(find<QLabel>(shown.window, "Note").text().toStdString(),
              "Nur Ansicht: Werte aus der letzten Antwort des Fahrzeugs");
}

} // namespace karvo::test
