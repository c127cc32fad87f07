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
    bench.find<QCheckBox>("Check128").click();
    EXPECT_EQ(bench.line(), "CV2  = 148  geändert");
    bench.driver.expect(QStringLiteral("limits"), [](QWidget& window) { window.close(); });
    bench.find<QCheckBox>("Check64").click(); // 212
    EXPECT_EQ(bench.line(), "CV2  = 148  geändert");
    EXPECT_FALSE(bench.find<QCheckBox>("Check64").isChecked());
    EXPECT_EQ(bench.text("Errechneter_Wert"), "148");
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
