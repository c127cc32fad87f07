#include "editors/forms/fahrstufen_f5.h"
#include "editors/forms/step_graph.h"

#include "shell/form_bench.h"
#include "support/modal_driver.h"
#include "ui/captions.h"
#include "workbench/offline_list.h"

#include <QAccessible>
#include <QComboBox>
#include <QRadioButton>

namespace karvo::test
{

template <typename Window>
struct StepsBench : FormBench {
    explicit StepsBench(const std::function<void(ProgramState&)>& before = [](auto&) {})
    {
        state.userFolders.speedSteps.own = "fs";
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        for (int step = 1; step <= 28; ++step)
            state.set.table.setValue(98 - step, 5 * step);
        before(state);
        journal.clear();
        window_ = std::make_unique<Window>(bench);
        window().show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window()));
    }
    Window& window() { return *window_; }
    StepGraph& graph() { return find<StepGraph>(window(), "p"); }
    int step(int step) { return std::stoi("0" + fieldOf(window(), "Text1_" + std::to_string(step - 1))); }
    void type(const char* name, const char* typed)
    {
        auto& field = find<QLineEdit>(window(), name);
        field.setFocus();
        field.clear();
        QTest::keyClicks(&field, QString::fromLatin1(typed));
        QTest::keyClick(&field, Qt::Key_Return);
    }
    void press(Qt::Key key, int times = 1)
    {
        graph().setFocus();
        for (int i = 0; i < times; ++i)
            QTest::keyClick(&graph(), key);
    }
    // A curve of the menu, with these answers to what it asks.
    void choose(const char* item, const std::vector<Text>& answers)
    {
        for (const Text& answer : answers)
            prompts.type(answer);
        trigger(window(), item);
    }
    int value(int cv) { return state.set.table.value(cv).value_or(-1); }

private:
    std::unique_ptr<Window> window_;
};

using KarvoSteps = StepsBench<Fahrstufen>;

TEST(Fahrstufen, TakesOverOnlyWithItsButton)
{
    KarvoSteps bench;
    EXPECT_EQ(bench.step(1), 5);
    EXPECT_EQ(bench.step(28), 140);
    bench.type("Text1_1", "12");
    EXPECT_EQ(bench.value(96), 10);
    click(bench.window(), "Uebernehmen");
    EXPECT_EQ(bench.value(96), 12);
    EXPECT_TRUE(bench.state.set.unsavedChanges);
    bench.type("Text1_1", "99");
    click(bench.window(), "Zuruecksetzen");
    EXPECT_EQ(bench.step(2), 12);
    click(bench.window(), "Abbrechen");
    EXPECT_FALSE(bench.window().isVisible()) << "nothing is lost";
}

TEST(Fahrstufen, AChangedCurveIsNotClosedWithoutAQuestion)
{
    ModalDriver driver; // begins by ending an event loop, which closes windows
    KarvoSteps bench;
    const auto question = qtText(bench.state.texts.message(Message::discardQuestion));
    bench.type("Text1_1", "98");
    driver.expectBox(question, QStringLiteral("Weiter bearbeiten"));
    click(bench.window(), "Abbrechen");
    EXPECT_TRUE(bench.window().isVisible());
    click(bench.window(), "Zuruecksetzen");
    find<QLineEdit>(bench.window(), "Text1_2").setFocus();
    QTest::keyClicks(&find<QLineEdit>(bench.window(), "Text1_2"), QStringLiteral("7")); // not taken yet
    driver.expectBox(question, QStringLiteral("Verwerfen"));
    QTest::keyClick(&bench.window(), Qt::Key_Escape);
    EXPECT_FALSE(bench.window().isVisible());
    EXPECT_EQ(bench.value(96), 10);
}

TEST(Fahrstufen, RefusesAValueOutsideItsLimitsOnce)
{
    for (const char* const wrong : {"169", "x", ""}) {
        KarvoSteps bench;
        bench.type("Text1_2", wrong);
        EXPECT_EQ(
            joined(bench.journal),
            "message Fahrstufe 3 kann nur ganze Zahlen von 3 bis 168 annehmen. Bitte ändern Sie den Wert.");
        click(bench.window(), "Uebernehmen");
        EXPECT_EQ(bench.value(95), 15) << wrong;
    }
}

TEST(Fahrstufen, TheChosenStepHasAFieldOfItsOwn)
{
    KarvoSteps bench;
    auto& steps = find<QComboBox>(bench.window(), "Combo1");
    EXPECT_EQ(steps.count(), 28);
    EXPECT_EQ(steps.itemText(27), QStringLiteral("28"));
    steps.setFocus();
    QTest::keyClick(&steps, Qt::Key_Down);
    EXPECT_EQ(fieldOf(bench.window(), "Text2"), "10");
    EXPECT_EQ(bench.graph().chosenStep(), 2);
    bench.type("Text2", "13");
    EXPECT_EQ(bench.step(2), 13);
    bench.type("Text1_1", "14");
    EXPECT_EQ(fieldOf(bench.window(), "Text2"), "14");
}

TEST(Fahrstufen, BarsFollowMouseAndKeysWithinTheLimits)
{
    KarvoSteps bench;
    StepGraph& graph = bench.graph();
    QTest::mousePress(&graph, Qt::LeftButton, {}, graph.endOfBar(14, 70));
    EXPECT_EQ(graph.chosenStep(), 14);
    EXPECT_EQ(bench.step(14), 70) << "a press alone changes nothing";
    QTest::mouseMove(&graph, graph.endOfBar(14, 100));
    EXPECT_NEAR(bench.step(14), 100, 1);
    QTest::mouseMove(&graph, graph.endOfBar(20, 0) + QPoint(0, 500));
    EXPECT_EQ(bench.step(14), 3);
    EXPECT_EQ(bench.step(20), 100) << "another bar is not touched";
    QTest::mouseRelease(&graph, Qt::LeftButton);
    bench.press(Qt::Key_Down);
    EXPECT_EQ(bench.step(14), 3);
    bench.press(Qt::Key_Up);
    bench.press(Qt::Key_PageUp);
    EXPECT_EQ(bench.step(14), 14);
    bench.press(Qt::Key_Right);
    bench.press(Qt::Key_Up);
    EXPECT_EQ(bench.step(15), 76);
    bench.press(Qt::Key_End);
    bench.press(Qt::Key_PageUp, 4);
    bench.press(Qt::Key_Right);
    EXPECT_EQ(graph.chosenStep(), 28);
    click(bench.window(), "Uebernehmen");
    EXPECT_EQ(bench.value(84), 14);
    EXPECT_EQ(bench.value(70), 168);
}

TEST(Fahrstufen, TheGraphSpeaksItsChosenBar)
{
    KarvoSteps bench;
    auto* const voice = QAccessible::queryAccessibleInterface(&bench.graph());
    ASSERT_TRUE(voice != nullptr && voice->valueInterface() != nullptr);
    EXPECT_EQ(voice->text(QAccessible::Name).toStdString(), "Balkendiagramm der Fahrstufen");
    bench.graph().choose(3);
    EXPECT_EQ(voice->text(QAccessible::Value).toStdString(), "Fahrstufe 3: 15");
    auto& value = *voice->valueInterface();
    EXPECT_EQ(value.currentValue().toInt(), 15);
    EXPECT_EQ(value.maximumValue().toInt(), 168);
    value.setCurrentValue(20);
    EXPECT_EQ(bench.step(3), 20);
}

TEST(Fahrstufen, CurvesAreTriedAndTakenBack)
{
    const struct {
        const char* item;
        std::vector<Text> answers;
        std::array<int, 3> values; // of steps 1, 14 and 28
    } cases[] = {
        {"mnu_standart", {u"5", u"140"}, {5, 70, 140}}, // 70: 5 + 13 * 5
        {"mnu_E_FS1", {u"59"}, {59, 98, 140}},
        {"mnu_E_FS28", {u"59"}, {5, 31, 59}},
        {"mnu_E_FS1_28", {u"5", u"140"}, {5, 70, 140}},
        {"mnu_E_FS_1_14_28", {u"5", u"40", u"140"}, {5, 40, 140}},
        {"mnu_log", {u"3", u"168"}, {5, 22, 168}},
        {"mnu_expo", {u"3", u"168"}, {3, 146, 166}},
    };
    KarvoSteps bench;
    for (const auto& [item, answers, values] : cases) {
        bench.choose(item, answers);
        EXPECT_EQ((std::array{bench.step(1), bench.step(14), bench.step(28)}), values) << item;
        click(bench.window(), "Zuruecksetzen");
        EXPECT_EQ(bench.step(14), 70) << item;
        EXPECT_EQ(bench.value(84), 70) << item;
    }
    for (const bool yes : {false, true}) {
        bench.prompts.answer(yes);
        bench.choose("mnu_ueberhoeht", {});
        EXPECT_EQ(bench.step(14), yes ? 39 : 70) << "5 and half of 13 * 135 / 26";
        EXPECT_EQ(bench.step(28), yes ? 168 : 140);
    }
    click(bench.window(), "Uebernehmen");
    EXPECT_EQ(bench.value(84), 39);
}

TEST(Fahrstufen, TheGenerationF5HasItsOwnLimits)
{
    StepsBench<FahrstufenF5> bench([](auto& state) { state.set.profile.generation = Generation::f5; });
    EXPECT_EQ(bench.window().objectName(), QStringLiteral("FahrstufenF5"));
    EXPECT_EQ(bench.graph().highest(), 120);
    bench.choose("mnu_standart", {u"5", u"81", u"80"});
    EXPECT_EQ(bench.step(28), 80) << "the linear curve goes up to 80";
    bench.choose("mnu_log", {u"5", u"121", u"120"});
    EXPECT_EQ(bench.step(28), 120);
}

TEST(Fahrstufen, ATableBringsItsBaseAndTopSpeed)
{
    ModalDriver driver;
    KarvoSteps bench;
    std::string content = "K\r\n2;20;x\r\n5;130;x\r\n";
    for (int cv = 97; cv >= 70; --cv)
        content += std::to_string(cv) + ";" + std::to_string(107 - cv) + ";x\r\n";
    bench.files.content["fs/FS_CI26_24_CV2_CV5.fcr"] = bytesOf(content);
    driver.expect(QStringLiteral("tables"), [](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName().toStdString(), "Pre_Fahrstufen");
        EXPECT_EQ(dialog.findChildren<QRadioButton*>().size(), 4);
        find<QRadioButton>(dialog, "FS_CI46_12_CV2_CV5.fcr").setChecked(true);
        click(dialog, "Laden"); // there is none: said, and another one can be chosen
        EXPECT_TRUE(dialog.isVisible());
        find<QRadioButton>(dialog, "FS_CI26_24_CV2_CV5.fcr").setChecked(true);
        click(dialog, "Laden");
    });
    trigger(bench.window(), "mnu_tabelle");
    EXPECT_EQ(bench.journal.size(), 1U);
    EXPECT_EQ(bench.step(1), 10);
    EXPECT_EQ(bench.step(28), 37);
    EXPECT_EQ(bench.value(2), 1);
    click(bench.window(), "Uebernehmen");
    EXPECT_EQ(bench.value(2), 20);
    EXPECT_EQ(bench.value(5), 130);
    EXPECT_EQ(bench.value(97), 10);
}

TEST(Fahrstufen, InViewModeTheLastReplyIsShownAndNothingElse)
{
    KarvoSteps bench([](auto& state) {
        state.speedStepViews = 1;
        state.link.lastReply = Bytes(28, 44);
    });
    EXPECT_EQ(bench.step(1), 44);
    EXPECT_FALSE(find(bench.window(), "Uebernehmen").isEnabled());
    EXPECT_FALSE(find<QAction>(bench.window(), "mnu_tabelle").isEnabled());
    bench.press(Qt::Key_Up);
    EXPECT_EQ(bench.step(1), 44);
    EXPECT_EQ(labelOf(bench.window(), "Note"), "Nur Ansicht: Werte aus der letzten Antwort des Fahrzeugs");
}

} // namespace karvo::test
