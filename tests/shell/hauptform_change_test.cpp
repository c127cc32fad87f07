// Changing values in the main window.
#include "shell/window_bench.h"

#include <QCheckBox>

namespace karvo::test
{

struct ChangeBench : WindowBench {
    ChangeBench()
    {
        showOfflineList();
        chooseCv(2);
    }
    QLineEdit& value() { return find<QLineEdit>("CV_Wert"); }
    void typeValue(const char* text) { type("CV_Wert", text); }
    // The value ended with the Enter key.
    void enter(const char* text)
    {
        typeValue(text);
        QTest::keyClick(&value(), Qt::Key_Return);
    }
    bool hasFocus(const char* name) { return window->focusWidget() == &find<QWidget>(name); }
};

TEST(HauptformChange, TakesATypedValueByKeyAndByButton)
{
    ChangeBench bench;
    bench.typeValue("25");
    EXPECT_EQ(bench.line(), "CV2  = 20") << "typing alone changes nothing";
    QTest::keyClick(&bench.value(), Qt::Key_Return);
    EXPECT_EQ(bench.line(), "CV2  = 25  geändert");
    EXPECT_TRUE(bench.hasFocus("List1")) << "on to the next CV";
    bench.typeValue("26");
    bench.click("Enter_Taste");
    EXPECT_EQ(bench.line(), "CV2  = 26  geändert");
    bench.enter("20");
    EXPECT_EQ(bench.line(), "CV2  = 20") << "the value that was read is no change";
    bench.expectBoxWith("1 bis 200");
    bench.enter("201");
    EXPECT_EQ(bench.line(), "CV2  = 20");
    EXPECT_TRUE(bench.hasFocus("CV_Wert")) << "to be mended";
}

TEST(HauptformChange, BeginsAndStepsAValueFromTheListAndGivesUpWithEscape)
{
    ChangeBench bench;
    bench.activate();
    QTest::keyClick(&bench.list(), Qt::Key_F2);
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
    bench.typeValue("99");
    QTest::keyClick(&bench.value(), Qt::Key_Escape);
    EXPECT_EQ(bench.field("CV_Wert"), "20");
    EXPECT_TRUE(bench.hasFocus("List1"));

    QTest::keyClick(&bench.list(), Qt::Key_1);
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
    QTest::keyClicks(&bench.value(), QStringLiteral("97"));
    QTest::keyClick(&bench.value(), Qt::Key_Return);
    EXPECT_EQ(bench.line(), "CV2  = 197  geändert");
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(&bench.list(), Qt::Key_Plus);
    EXPECT_EQ(bench.line(), "CV2  = 200  geändert") << "no further than its limit, without a message";
    QTest::keyClick(&bench.list(), Qt::Key_Minus);
    EXPECT_EQ(bench.line(), "CV2  = 199  geändert");
}

TEST(HauptformChange, TakesTheBitsAsTheyAreTickedWithinTheLimits)
{
    ChangeBench bench;
    bench.state.set.table.at(29, Column::upperLimit) = u"14";
    bench.chooseCv(29);
    bench.click("Check1");
    EXPECT_EQ(bench.line(), "CV29 = 7  geändert");
    bench.expect("limits");
    bench.click("Check8"); // 15
    EXPECT_EQ(bench.line(), "CV29 = 7  geändert");
    EXPECT_FALSE(bench.find<QCheckBox>("Check8").isChecked());
    EXPECT_EQ(bench.text("Errechneter_Wert"), "7");
}

// Whatever comes next: with a number that is not there nothing happens but one box, and the number can be
// mended.
TEST(HauptformChange, NothingActsBeforeATypedNumberIsMended)
{
    using Act = std::function<void(ChangeBench&)>;
    std::vector<std::pair<std::string, Act>> acts = {
        {"return",
         [](auto& b) { QTest::keyClick(&b.template find<QLineEdit>("CV_Nummer"), Qt::Key_Return); }},
        {"value", [](auto& b) { b.typeValue("9"); }},
        {"F5", [](auto& b) { b.press(Qt::Key_F5); }},
        {"row", [](auto& b) { b.list().setCurrentRow(7); }},
        {"port", [](auto& b) { b.template find<QComboBox>("COM").setCurrentIndex(8); }},
        {"close", [](auto& b) { b.window->close(); }},
    };
    for (const auto& button : wordsOf("Enter_Taste Check1 Einzelne_speichern Alle_speichern Start"))
        acts.emplace_back(button, [button](auto& b) { b.click(button); });
    for (const auto& item : wordsOf("mnu_write_all mnu_reset mnu_KV08 mnu_open mnu_english mnu_dcc_adresse"))
        acts.emplace_back(item, [item](auto& b) { b.choose(item); });
    for (const auto& [what, act] : acts) {
        ChangeBench bench;
        bench.chooseCv(29);
        bench.type("CV_Nummer", "200");
        bench.expectBoxWith("CV200");
        act(bench);
        EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); })) << what;
        QTest::qWait(20); // a second box would be unexpected
        EXPECT_EQ(bench.line() + "|" + bench.field("CV_Nummer") + "|" + bench.field("CV_Wert"),
                  "CV29 = 6|200|6")
            << what;
        EXPECT_FALSE(bench.port.isOpen() || bench.state.link.portNumber != 5) << what;
        EXPECT_TRUE(bench.item("mnu_german").isChecked() && bench.window->isVisible()) << what;
        EXPECT_TRUE(bench.hasFocus("CV_Nummer")) << what;
        QTest::keyClick(&bench.find<QLineEdit>("CV_Nummer"), Qt::Key_Escape);
        EXPECT_EQ(bench.field("CV_Nummer"), "29") << what;
    }
}

TEST(HauptformChange, ATypedNumberIsMeantByTheValueAfterIt)
{
    ChangeBench bench;
    bench.activate();
    auto& number = bench.find<QLineEdit>("CV_Nummer");
    number.setFocus();
    bench.type("CV_Nummer", "12");
    QTest::keyClick(&number, Qt::Key_Tab);
    EXPECT_EQ(bench.line(), "CV12 = 12") << "taken when the field is left";
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
    QTest::keyClicks(&bench.value(), QStringLiteral("99"));
    bench.type("CV_Nummer", "5"); // without leaving the value: it belongs to CV12
    EXPECT_EQ(bench.state.set.table.value(12), 99);
    bench.typeValue("88");
    bench.click("Enter_Taste");
    EXPECT_EQ(bench.line(), "CV5  = 88  geändert");
    EXPECT_EQ(bench.state.set.table.value(12), 99);
    EXPECT_EQ(bench.state.set.table.value(2), 20);
}

TEST(HauptformChange, ATypedValueIsTakenBeforeAnythingElse)
{
    ChangeBench bench;
    bench.typeValue("66");
    bench.chooseCv(3);
    EXPECT_EQ(bench.line(), "CV3  = 3");
    EXPECT_EQ(bench.lineOf(2), "CV2  = 66  geändert");
    bench.typeValue("67");
    bench.expectBox(Message::unsavedChangesQuestion, "Abbrechen");
    bench.press(Qt::Key_F5);
    EXPECT_EQ(bench.line(), "CV3  = 67  geändert");
    EXPECT_FALSE(bench.port.isOpen());
    bench.chooseCv(2);
    bench.typeValue("201");
    bench.expect("limits");
    bench.chooseCv(4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); }));
    EXPECT_EQ(bench.line(), "CV2  = 66  geändert");
    EXPECT_EQ(bench.field("CV_Wert"), "201") << "to be mended";
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
}

TEST(HauptformChange, TakesBackOneAndAll)
{
    ChangeBench bench;
    EXPECT_FALSE(bench.isEnabled("Zuruecknehmen") || bench.isEnabled("Alle_zuruecknehmen"));
    for (const int cv : {2, 3, 4}) {
        bench.chooseCv(cv);
        bench.enter("77");
    }
    bench.click("Zuruecknehmen");
    EXPECT_EQ(bench.line(), "CV4  = 4");
    EXPECT_FALSE(bench.isEnabled("Zuruecknehmen"));
    EXPECT_TRUE(bench.isEnabled("Alle_zuruecknehmen"));
    bench.click("Alle_zuruecknehmen");
    EXPECT_FALSE(bench.isEnabled("Alle_zuruecknehmen"));
    EXPECT_EQ(bench.lineOf(2) + bench.lineOf(3), "CV2  = 20CV3  = 3");
    WindowBench without; // a CV
    for (const auto& name :
         wordsOf("Enter_Taste Zuruecknehmen Alle_zuruecknehmen Einzelne_speichern Alle_speichern Check1"))
        EXPECT_FALSE(without.isEnabled(name)) << name;
    EXPECT_TRUE(without.find<QLineEdit>("CV_Wert").isReadOnly());
}

} // namespace karvo::test
