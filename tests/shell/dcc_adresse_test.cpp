// The DCC addresses in the main window, written to a simulated decoder.
#include "editors/forms/dcc_adresse.h"

#include "shell/window_bench.h"

#include <QCheckBox>
#include <QRadioButton>

namespace karvo::test
{

struct AddressBench : WindowBench {
    AddressBench()
    {
        click("Start");
        EXPECT_GT(list().count(), 170);
    }
    // The dialog; `act` fills it in, and `button` ends it.
    void edit(const std::function<void(QWidget&)>& act, const char* button)
    {
        driver.expect(QStringLiteral("DCC_Adresse"), [act, button](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName().toStdString(), "DCC_Adresse");
            act(dialog);
            test::click(dialog, button);
        });
    }
    void choose() { WindowBench::choose("mnu_dcc_adresse"); }
};

static void typeInto(QWidget& dialog, const char* first, const char* second)
{
    find<QLineEdit>(dialog, "Erste_Adresse").setText(QString::fromLatin1(first));
    find<QLineEdit>(dialog, "Zweite_Adresse").setText(QString::fromLatin1(second));
}

static void tick(QWidget& dialog, const char* name, bool ticked)
{
    find<QAbstractButton>(dialog, name).setChecked(ticked);
}

TEST(DccAdresse, WritesLongAddressesAndShowsThem)
{
    AddressBench bench;
    bench.edit(
        [](QWidget& dialog) {
            EXPECT_EQ(fieldOf(dialog, "Erste_Adresse"), "3");
            tick(dialog, "LongForm", true);
            EXPECT_EQ(fieldOf(dialog, "Erste_Adresse"), "128");
            typeInto(dialog, "9999", "300");
            tick(dialog, "Check2", true);
            EXPECT_EQ(labelOf(dialog, "Plan"),
                      "CV17 = 39\nCV18 = 15\nCV15 = 1\nCV16 = 44\nCV29 = 32\nCV21 = 19");
        },
        "Command1");
    bench.expectBox(Message::addressesWritten);
    bench.choose();
    for (const auto& [cv, value] : {std::pair{17, 39}, {18, 15}, {15, 1}, {16, 44}, {29, 32}, {21, 19}}) {
        EXPECT_EQ(bench.held(cv), value) << cv;
        EXPECT_EQ(bench.state.set.table.value(cv), value) << cv;
    }
    EXPECT_EQ(bench.text("DCC1"), "9999");
    EXPECT_FALSE(bench.window->isWindowModified());
    EXPECT_EQ(bench.kept.size(), 1U);
}

TEST(DccAdresse, WhatIsWrongOrNotTickedWritesNothing)
{
    AddressBench bench;
    bench.edit(
        [](QWidget& dialog) {
            typeInto(dialog, "12", "127");
            click(dialog, "Command1");
            EXPECT_TRUE(dialog.isVisible()) << "to be mended";
        },
        "Command2");
    bench.expectBox(Message::secondShortAddressWrong);
    bench.expectBox(Message::discardQuestion, "Verwerfen");
    bench.choose();
    bench.edit(
        [](QWidget& dialog) {
            for (const char* const name : {"Erste_AD", "Zweite_AD"})
                tick(dialog, name, false);
            click(dialog, "Command1");
            EXPECT_TRUE(dialog.isVisible());
            for (const char* const name : {"Erste_AD", "Zweite_AD"})
                tick(dialog, name, true);
        },
        "Command2");
    bench.expect("only the switches?");
    bench.choose();
    EXPECT_EQ(bench.held(1), 3);
    EXPECT_TRUE(bench.kept.empty());
}

TEST(DccAdresse, WhatWasNotWrittenIsTold)
{
    AddressBench bench;
    bench.port.simulator().setFault(sim::Fault::refusedCommand);
    bench.edit([](QWidget& dialog) { typeInto(dialog, "12", "13"); }, "Command1");
    bench.expectBox(Message::announcementRefused);
    bench.expect("report", [](QWidget& box) {
        EXPECT_EQ(box.objectName().toStdString(), "Schreibbericht");
        box.close();
    });
    bench.choose();
    EXPECT_EQ(bench.held(1), 3);
    EXPECT_EQ(bench.state.set.table.value(1), 12) << "it stays in the list, marked";
    EXPECT_TRUE(bench.state.set.list[0].changed);
}

TEST(DccAdresse, KeepsWhatWasTypedInEachForm)
{
    AddressBench bench;
    DCC_Adresse window(bench.state.set, bench.prompts, bench.state.texts);
    window.show();
    const auto shown = [&] {
        return fieldOf(window, "Erste_Adresse") + " " + fieldOf(window, "Zweite_Adresse");
    };
    typeInto(window, "12", "13");
    tick(window, "LongForm", true);
    typeInto(window, "500", "600");
    tick(window, "ShortForm", true);
    EXPECT_EQ(shown(), "12 13");
    typeInto(window, "3", "4");
    QTest::keyClick(&find<QLineEdit>(window, "Erste_Adresse"), Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "Enter writes nothing";
    bench.expectBox(Message::discardQuestion, "Weiter bearbeiten");
    window.close(); // the long addresses would be lost
    tick(window, "LongForm", true);
    EXPECT_EQ(shown(), "500 600");
    window.hide();
}

TEST(ServoAddresse, WritesBothCvsOfEachServoThatIsTicked)
{
    AddressBench bench;
    bench.expect("Servo_Addresse", [](QWidget& dialog) {
        auto& address = find<QLineEdit>(dialog, "Servo1_Adresse");
        tick(dialog, "Servo1_AD", false);
        tick(dialog, "Servo2_AD", false);
        EXPECT_FALSE(find(dialog, "Command1").isEnabled());
        tick(dialog, "Servo1_AD", true);
        address.setText(QStringLiteral("10000"));
        click(dialog, "Command1");
        EXPECT_TRUE(dialog.isVisible());
        address.setText(QStringLiteral("9999"));
        EXPECT_EQ(labelOf(dialog, "Plan"), "CV11 = 39\nCV12 = 15");
        click(dialog, "Command1");
    });
    bench.expect("refused");
    bench.expectBoxWith("CV11 + CV12  " + bench.message(Message::writtenNotice).toStdString());
    bench.click("Servo_Addr");
    EXPECT_EQ(bench.held(11), 39);
    EXPECT_EQ(bench.held(12), 15);
}

} // namespace karvo::test
