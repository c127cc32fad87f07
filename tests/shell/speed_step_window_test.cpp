#include "editors/forms/fahrstufen.h"
#include "editors/forms/step_graph.h"

#include "shell/window_bench.h"
#include "support/case_table.h"
#include "workbench/offline_list.h"

#include <QAccessible>
#include <QComboBox>

namespace karvo::test
{

// Steps of 5 to 139, and one beyond what can be typed.
template <typename Window = Fahrstufen>
struct SpeedStepBench : FormBench {
    ModalDriver driver; // begins by ending an event loop, which closes windows
    std::unique_ptr<Window> window;

    explicit SpeedStepBench(const std::function<void(ProgramState&)>& before = [](auto&) {})
    {
        state.userFolders.speedSteps.own = "fs";
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        for (int step = 1; step <= 28; ++step)
            state.set.table.setValue(98 - step, step == 27 ? 200 : 5 * step);
        before(state);
        window = std::make_unique<Window>(bench);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        journal.clear();
    }
    StepGraph& graph() { return find<StepGraph>(*window, "p"); }
    int step(int step) { return std::stoi("0" + fieldOf(*window, "Text1_" + std::to_string(step - 1))); }
    int value(int cv) { return state.set.table.value(cv).value_or(-1); }
    void click(const char* button) { test::click(*window, button); }
    void type(const char* name, const char* typed, Qt::Key last = Qt::Key_Return)
    {
        auto& field = find<QLineEdit>(*window, name);
        field.setFocus();
        field.clear();
        QTest::keyClicks(&field, QString::fromLatin1(typed));
        QTest::keyClick(&field, last);
    }
    void press(std::initializer_list<Qt::Key> keys)
    {
        for (const auto key : keys)
            QTest::keyClick(&graph(), key);
    }
    // A curve of the menu, with these answers to what it asks: what steps 1, 14 and 28 are then.
    std::string choose(const std::string& item, const std::string& answers)
    {
        for (const auto& answer : wordsOf(answers))
            answer == "yes" || answer == "no" ? prompts.answer(answer == "yes")
                                              : prompts.type(textFromUtf8(answer));
        trigger(*window, item);
        return std::to_string(step(1)) + " " + std::to_string(step(14)) + " " + std::to_string(step(28));
    }
};

TEST(Fahrstufen, TakesOverOnlyWithItsButtonAndIsNotClosedWithoutAQuestion)
{
    SpeedStepBench bench;
    const auto question = QString::fromStdU16String(bench.state.texts.message(Message::discardQuestion));
    for (const char* const wrong : {"169", "2", "x", ""}) {
        bench.journal.clear();
        bench.type("Text1_2", wrong);
        EXPECT_EQ(
            joined(bench.journal),
            "message Fahrstufe 3 kann nur ganze Zahlen von 3 bis 168 annehmen. Bitte ändern Sie den Wert.");
        bench.click("Uebernehmen");
        EXPECT_EQ(bench.value(95), 15) << wrong;
    }
    bench.type("Text1_2", "12");
    EXPECT_EQ(bench.value(95), 15);
    bench.click("Uebernehmen");
    EXPECT_EQ(bench.value(95), 12);
    EXPECT_EQ(bench.value(71), 200) << "left alone";
    bench.type("Text1_2", "98");
    bench.driver.expectBox(question, QStringLiteral("Weiter bearbeiten"));
    bench.click("Abbrechen");
    EXPECT_TRUE(bench.window->isVisible());
    bench.click("Zuruecksetzen");
    EXPECT_EQ(bench.step(3), 12);
    bench.type("Text1_2", "7", Qt::Key_0); // not taken yet
    bench.driver.expectBox(question, QStringLiteral("Verwerfen"));
    QTest::keyClick(bench.window.get(), Qt::Key_Escape);
    EXPECT_FALSE(bench.window->isVisible());
}

TEST(Fahrstufen, TheChosenStepHasAFieldOfItsOwn)
{
    SpeedStepBench bench;
    QTest::keyClick(&find<QComboBox>(*bench.window, "Combo1"), Qt::Key_Down);
    EXPECT_EQ(fieldOf(*bench.window, "Text2"), "10");
    EXPECT_EQ(bench.graph().chosenStep(), 2);
    bench.type("Text2", "13");
    EXPECT_EQ(bench.step(2), 13);
    bench.type("Text1_1", "14");
    EXPECT_EQ(fieldOf(*bench.window, "Text2"), "14");
}

TEST(Fahrstufen, BarsFollowMouseAndKeysWithinTheLimitsAndSpeak)
{
    SpeedStepBench bench;
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
    bench.press({Qt::Key_Down, Qt::Key_Up, Qt::Key_PageUp});
    EXPECT_EQ(bench.step(14), 14);
    bench.press({Qt::Key_Right, Qt::Key_Up});
    EXPECT_EQ(bench.step(15), 76);
    bench.press({Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_Right});
    EXPECT_EQ(bench.step(28), 168);

    auto* const voice = QAccessible::queryAccessibleInterface(&graph);
    EXPECT_EQ(voice->text(QAccessible::Value).toStdString(), "Fahrstufe 28: 168");
    voice->valueInterface()->setCurrentValue(20);
    EXPECT_EQ(voice->valueInterface()->currentValue().toInt(), 20);
    EXPECT_EQ(bench.step(28), 20);
}

TEST(Fahrstufen, CurvesAreTriedWithinTheLimitsAndTakenBack)
{
    SpeedStepBench bench;
    for (const auto& [item, answers, steps] : casesOf<3>("shell/curves.txt")) {
        EXPECT_EQ(bench.choose(item, answers), steps) << item;
        bench.click("Zuruecksetzen");
        EXPECT_EQ(bench.step(14), 70) << item;
    }
    SpeedStepBench<FahrstufenF5> f5([](auto& state) { state.set.profile.generation = Generation::f5; });
    EXPECT_EQ(f5.graph().highest(), 120) << "the generation has limits of its own";
    EXPECT_TRUE(f5.choose("mnu_standart", "5 81 80").ends_with(" 80")) << "linear: up to 80";
    EXPECT_TRUE(f5.choose("mnu_log", "5 121 120").ends_with(" 120"));
}

TEST(Fahrstufen, ATableBringsItsBaseAndTopSpeed)
{
    SpeedStepBench bench;
    std::string content = "K\r\n2;20;x\r\n5;130;x\r\n";
    for (int cv = 97; cv >= 70; --cv)
        content += std::to_string(cv) + ";" + std::to_string(107 - cv) + ";x\r\n";
    bench.files.content["fs/FS_CI26_24_CV2_CV5.fcr"] = bytesOf(content);
    bench.driver.expect(QStringLiteral("tables"), [](QWidget& dialog) {
        test::click(dialog, "Laden"); // the file of the first one is missing: another one can be chosen
        find<QAbstractButton>(dialog, "FS_CI26_24_CV2_CV5.fcr").setChecked(true);
        test::click(dialog, "Laden");
    });
    trigger(*bench.window, "mnu_tabelle");
    EXPECT_EQ(bench.journal.size(), 1U);
    EXPECT_EQ(bench.step(28), 37);
    EXPECT_EQ(bench.value(2), 1);
    bench.click("Uebernehmen");
    EXPECT_EQ((std::array{bench.value(2), bench.value(5), bench.value(97)}), (std::array{20, 130, 10}));
}

TEST(Fahrstufen, InViewModeTheLastReadIsShownAndNothingElse)
{
    SpeedStepBench bench([](auto& state) {
        state.speedStepViews = 1;
        state.lastRead.emplace().image.fill(44);
    });
    EXPECT_FALSE(find(*bench.window, "Uebernehmen").isEnabled());
    EXPECT_FALSE(find<QAction>(*bench.window, "mnu_tabelle").isEnabled());
    bench.press({Qt::Key_Up});
    EXPECT_EQ(bench.step(1), 44);
}

} // namespace karvo::test
