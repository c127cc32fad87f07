// Changing values in the main window.
#include "shell/window_bench.h"

#include <QCheckBox>
#include <QPushButton>

namespace karvo::test
{
namespace
{

const QString ok = QStringLiteral("OK");

struct ChangeBench : WindowBench {
    ChangeBench()
    {
        showOfflineList();
        chooseCv(2);
    }
    std::string line() { return list().currentItem()->text().toStdString(); }
    QLineEdit& value() { return find<QLineEdit>("CV_Wert"); }
    QPushButton& button(const char* name) { return find<QPushButton>(name); }
    void type(const char* text)
    {
        value().selectAll();
        QTest::keyClicks(&value(), QString::fromLatin1(text));
    }
};

TEST(HauptformChange, TakesATypedValueByKeyAndByButton)
{
    ChangeBench bench;
    bench.type("25");
    EXPECT_EQ(bench.line(), "CV2  = 20") << "typing alone changes nothing";
    QTest::keyClick(&bench.value(), Qt::Key_Return);
    EXPECT_EQ(bench.line(), "CV2  = 25  geändert");
    EXPECT_EQ(bench.window->focusWidget(), &bench.list()) << "on to the next CV";
    bench.type("26");
    bench.button("Enter_Taste").click();
    EXPECT_EQ(bench.line(), "CV2  = 26  geändert");
    EXPECT_EQ(bench.state.set.currentNumber, 2);
    bench.type("20");
    QTest::keyClick(&bench.value(), Qt::Key_Return);
    EXPECT_EQ(bench.line(), "CV2  = 20") << "the value that was read is no change";
}

TEST(HauptformChange, RefusesAValueBeyondItsLimitsAndKeepsTheKeyboardThere)
{
    ChangeBench bench;
    bench.type("201");
    bench.driver.expect(QStringLiteral("limits"), [](QWidget& window) {
        const auto text = dynamic_cast<QMessageBox&>(window).text();
        EXPECT_TRUE(text.contains(QStringLiteral("201"))) << text.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("1 bis 200"))) << text.toStdString();
        window.close();
    });
    QTest::keyClick(&bench.value(), Qt::Key_Return);
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_EQ(bench.line(), "CV2  = 20");
    EXPECT_EQ(bench.window->focusWidget(), &bench.value());
}

TEST(HauptformChange, EscapeGivesUpWhatWasTyped)
{
    ChangeBench bench;
    bench.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(bench.window.get()));
    QTest::keyClick(&bench.list(), Qt::Key_F2);
    EXPECT_EQ(bench.window->focusWidget(), &bench.value());
    bench.type("99");
    QTest::keyClick(&bench.value(), Qt::Key_Escape);
    EXPECT_EQ(bench.field("CV_Wert"), "20");
    EXPECT_EQ(bench.window->focusWidget(), &bench.list());
}

TEST(HauptformChange, BeginsAndStepsAValueFromTheList)
{
    ChangeBench bench;
    QTest::keyClick(&bench.list(), Qt::Key_1);
    EXPECT_EQ(bench.window->focusWidget(), &bench.value());
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
    bench.find<QCheckBox>("Check1").click();
    EXPECT_EQ(bench.line(), "CV29 = 7  geändert");
    bench.driver.expect(QStringLiteral("limits"), [](QWidget& window) { window.close(); });
    bench.find<QCheckBox>("Check8").click(); // 15
    EXPECT_EQ(bench.line(), "CV29 = 7  geändert");
    EXPECT_FALSE(bench.find<QCheckBox>("Check8").isChecked());
    EXPECT_EQ(bench.text("Errechneter_Wert"), "7");
}

// Whatever comes next: with a number that is not there nothing happens but one box, and the number can be
// mended.
TEST(HauptformChange, NothingActsBeforeATypedNumberIsMended)
{
    using Act = std::function<void(ChangeBench&)>;
    const auto click = [](const char* name) -> Act {
        return [name](ChangeBench& bench) { bench.find<QAbstractButton>(name).click(); };
    };
    const auto choose = [](const char* item) -> Act {
        return [item](ChangeBench& bench) { bench.item(item).trigger(); };
    };
    const std::pair<const char*, Act> acts[] = {
        {"return", [](ChangeBench& b) { QTest::keyClick(&b.find<QLineEdit>("CV_Nummer"), Qt::Key_Return); }},
        {"value", [](ChangeBench& b) { b.type("9"); }},
        {"take over", click("Enter_Taste")},
        {"bit", click("Check1")},
        {"write", click("Einzelne_speichern")},
        {"write changed", click("Alle_speichern")},
        {"read", click("Start")},
        {"F5", [](ChangeBench& b) { b.press(Qt::Key_F5); }},
        {"write all", choose("mnu_write_all")},
        {"reset", choose("mnu_reset")},
        {"offline list", choose("mnu_KV08")},
        {"open", choose("mnu_open")},
        {"language", choose("mnu_english")},
        {"addresses", choose("mnu_dcc_adresse")},
        {"row", [](ChangeBench& b) { b.list().setCurrentRow(7); }},
        {"port", [](ChangeBench& b) { b.find<QComboBox>("COM").setCurrentIndex(8); }},
        {"close", [](ChangeBench& b) { b.window->close(); }},
    };
    for (const auto& [what, act] : acts) {
        ChangeBench bench;
        bench.chooseCv(29);
        bench.WindowBench::type("CV_Nummer", "200");
        bench.driver.expect(QStringLiteral("no such number"), [&, name = what](QWidget& window) {
            EXPECT_TRUE(dynamic_cast<QMessageBox&>(window).text().contains(QStringLiteral("CV200"))) << name;
            window.close();
        });
        act(bench);
        EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); })) << what;
        QTest::qWait(20); // a second box would be unexpected
        EXPECT_FALSE(bench.port.isOpen()) << what;
        EXPECT_EQ(bench.line(), "CV29 = 6") << what;
        EXPECT_EQ(bench.field("CV_Nummer"), "200") << what;
        EXPECT_EQ(bench.field("CV_Wert"), "6") << what;
        EXPECT_TRUE(bench.item("mnu_german").isChecked()) << what;
        EXPECT_EQ(bench.state.link.portNumber, 5) << what;
        EXPECT_TRUE(bench.window->isVisible()) << what;
        EXPECT_EQ(bench.window->focusWidget(), &bench.find<QLineEdit>("CV_Nummer")) << what;
        QTest::keyClick(&bench.find<QLineEdit>("CV_Nummer"), Qt::Key_Escape);
        EXPECT_EQ(bench.field("CV_Nummer"), "29") << what;
    }
}

TEST(HauptformChange, ATypedNumberIsMeantByTheValueAfterIt)
{
    ChangeBench bench;
    bench.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(bench.window.get()));
    auto& number = bench.find<QLineEdit>("CV_Nummer");
    number.setFocus();
    bench.WindowBench::type("CV_Nummer", "12");
    QTest::keyClick(&number, Qt::Key_Tab);
    EXPECT_EQ(bench.line(), "CV12 = 12") << "taken when the field is left";
    EXPECT_EQ(bench.window->focusWidget(), &bench.value());
    QTest::keyClicks(&bench.value(), QStringLiteral("99"));
    bench.WindowBench::type("CV_Nummer", "5"); // without leaving the value: it belongs to CV12
    EXPECT_EQ(bench.state.set.table.value(12), 99);
    bench.type("88");
    bench.button("Enter_Taste").click();
    EXPECT_EQ(bench.line(), "CV5  = 88  geändert");
    EXPECT_EQ(bench.state.set.table.value(12), 99);
    EXPECT_EQ(bench.state.set.table.value(2), 20);
}

TEST(HauptformChange, ATypedValueIsTakenBeforeAnythingElse)
{
    ChangeBench bench;
    bench.type("66");
    bench.chooseCv(3);
    EXPECT_EQ(bench.line(), "CV3  = 3");
    EXPECT_EQ(bench.list().item(1)->text().toStdString(), "CV2  = 66  geändert");
    bench.type("67");
    bench.driver.expectBox(bench.message(Message::unsavedChangesQuestion), QStringLiteral("Abbrechen"));
    bench.press(Qt::Key_F5);
    EXPECT_EQ(bench.line(), "CV3  = 67  geändert");
    EXPECT_FALSE(bench.port.isOpen());
    bench.chooseCv(2);
    bench.type("201");
    bench.driver.expect(QStringLiteral("limits"), [](QWidget& window) { window.close(); });
    bench.chooseCv(4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); }));
    EXPECT_EQ(bench.line(), "CV2  = 66  geändert");
    EXPECT_EQ(bench.field("CV_Wert"), "201") << "to be mended";
    EXPECT_EQ(bench.window->focusWidget(), &bench.value());
}

TEST(HauptformChange, TakesBackOneAndAll)
{
    ChangeBench bench;
    EXPECT_FALSE(bench.button("Zuruecknehmen").isEnabled());
    EXPECT_FALSE(bench.button("Alle_zuruecknehmen").isEnabled());
    for (const int cv : {2, 3, 4}) {
        bench.chooseCv(cv);
        bench.type("77");
        bench.button("Enter_Taste").click();
    }
    bench.button("Zuruecknehmen").click();
    EXPECT_EQ(bench.line(), "CV4  = 4");
    EXPECT_FALSE(bench.button("Zuruecknehmen").isEnabled());
    EXPECT_TRUE(bench.button("Alle_zuruecknehmen").isEnabled());
    bench.button("Alle_zuruecknehmen").click();
    EXPECT_FALSE(bench.button("Alle_zuruecknehmen").isEnabled());
    EXPECT_EQ(bench.list().item(1)->text().toStdString(), "CV2  = 20");
    EXPECT_EQ(bench.list().item(2)->text().toStdString(), "CV3  = 3");
}

TEST(HauptformChange, OffersNothingWithoutACv)
{
    WindowBench bench;
    for (const char* name :
         {"Enter_Taste", "Zuruecknehmen", "Alle_zuruecknehmen", "Einzelne_speichern", "Alle_speichern"})
        EXPECT_FALSE(bench.find<QPushButton>(name).isEnabled()) << name;
    EXPECT_FALSE(bench.find<QCheckBox>("Check1").isEnabled());
    EXPECT_TRUE(bench.find<QLineEdit>("CV_Wert").isReadOnly());
}

} // namespace
} // namespace karvo::test
