// The windows for brake distances, addresses and servos. What is written goes to a simulated decoder.
#include "editors/forms/bremsen.h"
#include "editors/forms/dcc_adresse.h"
#include "editors/forms/live_dialog.h"

#include "shell/window_bench.h"
#include "workbench/offline_list.h"

#include <QSlider>
#include <QSpinBox>

namespace karvo::test
{

struct BrakingBench : FormBench {
    BrakingBench()
    {
        state.userFolders.distances.own = "abs";
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        for (const auto& [cv, value] : {std::pair{48, 10}, {52, 100}, {53, 30}, {54, 40}})
            state.set.table.setValue(cv, value);
        files.content["abs/Faller.bcr"] = bytesOf("K\r\n48;11;x;\r\n52;111;x;\r\n53;22;x;\r\n54;33;x\r\n");
        files.content["abs/CI_46.bcr"] = bytesOf("K\r\n52;112;x;\r\n53;999;x;\r\n");
    }
    static std::string fields(Bremsen& window)
    {
        std::string text;
        for (const auto& name : wordsOf("Text1 Text2 Text3 Text4"))
            text += fieldOf(window, name) + " ";
        return text;
    }
};

TEST(Bremsen, LoadsPresetsIntoItsFieldsAloneAndSavesAFileOfItsOwn)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    const std::pair<const char*, const char*> items[] = {{"mnu_Faller", "10 22 33 111 "}, // CV48 stays
                                                         {"mnu_L_Faller", "11 22 33 111 "},
                                                         {"mnu_L_CI46", "11 22 33 112 "},
                                                         {"mnu_aktuell", "10 30 40 100 "}};
    for (const auto& [item, fields] : items) {
        trigger(window, item);
        EXPECT_EQ(bench.fields(window), fields) << item;
    }
    EXPECT_NE(joined(bench.journal).find("Zeile 3"), std::string::npos);
    trigger(window, "mnu_L_CI26");
    EXPECT_NE(portable(bench.journal.back()).find("abs/CI_26.bcr"), std::string::npos) << "there is none";
    bench.prompts.chooseFile("abs/Faller.bcr");
    trigger(window, "menu_L_Datei");
    EXPECT_EQ(bench.journal.back(), "open *.bcr in abs: ");
    EXPECT_EQ(bench.fields(window), "11 22 33 111 ");
    EXPECT_EQ(bench.state.set.table.value(53), 30);
    Bremsen other(bench.bench, "Faller.bcr");
    EXPECT_EQ(bench.fields(other), "10 22 33 111 ");

    bench.prompts.chooseFile("abs/mine.bcr");
    trigger(other, "mnu_saveas");
    EXPECT_EQ(bench.journal.back(), "save *.bcr in abs or *.kvr in lists: ");
    EXPECT_TRUE(bench.files.exists("abs/mine.bcr"));
}

TEST(Bremsen, RefusesValuesOutsideTheirRangeOnceAndAtTheirField)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    window.show();
    auto& threshold = find<QLineEdit>(window, "Text4");
    const std::function<void()> acts[] = {[&] { QTest::keyClick(&threshold, Qt::Key_Return); },
                                          [&] { click(window, "OKButton"); },
                                          [&] { trigger(window, "mnu_saveas"); }};
    threshold.setText(QStringLiteral("95"));
    for (const auto& act : acts) {
        bench.journal.clear();
        act();
        ASSERT_EQ(bench.journal.size(), 1U) << "said, and no file dialog";
        EXPECT_TRUE(bench.journal[0].starts_with("message Dieser Wert ist für CV 52 nicht möglich"));
        EXPECT_TRUE(window.isVisible() && window.focusWidget() == &threshold);
        find<QLineEdit>(window, "Text1").setFocus();
    }
    threshold.setText(QStringLiteral("96"));
    QTest::keyClick(&threshold, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "Enter writes nothing";
    click(window, "OKButton");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    EXPECT_EQ(window.plan()[1].value, 96);
}

static void typeInto(QWidget& dialog, const char* first, const char* second)
{
    find<QLineEdit>(dialog, "Erste_Adresse").setText(QString::fromLatin1(first));
    find<QLineEdit>(dialog, "Zweite_Adresse").setText(QString::fromLatin1(second));
}

static void tick(QWidget& dialog, const char* name, bool ticked = true)
{
    find<QAbstractButton>(dialog, name).setChecked(ticked);
}

TEST(DccAdresse, TellsWhatIsWrongOrNotTickedAndWritesLongAddresses)
{
    WindowBench bench;
    bench.click("Start");
    bench.expect("DCC_Adresse", [](QWidget& dialog) {
        typeInto(dialog, "12", "127");
        click(dialog, "Command1");
        EXPECT_TRUE(dialog.isVisible()) << "to be mended";
        typeInto(dialog, "3", "127");
        tick(dialog, "Erste_AD", false);
        tick(dialog, "Zweite_AD", false);
        click(dialog, "Command1");
        EXPECT_TRUE(dialog.isVisible());
        click(dialog, "Command2");
    });
    bench.expectBox(Message::secondShortAddressWrong);
    bench.expect("only the switches?");
    bench.expectBox(Message::discardQuestion, "Verwerfen");
    bench.choose("mnu_dcc_adresse");
    EXPECT_TRUE(bench.kept.empty());

    bench.expect("DCC_Adresse", [](QWidget& dialog) {
        tick(dialog, "LongForm");
        EXPECT_EQ(fieldOf(dialog, "Erste_Adresse"), "128");
        typeInto(dialog, "9999", "300");
        tick(dialog, "Check2");
        EXPECT_TRUE(labelOf(dialog, "Plan").starts_with("CV17 = 39\nCV18 = 15\nCV15 = 1\n"));
        click(dialog, "Command1");
    });
    bench.expectBox(Message::addressesWritten);
    bench.choose("mnu_dcc_adresse");
    EXPECT_EQ(bench.held(17), 39);
    EXPECT_EQ(bench.held(21), 19);
    EXPECT_EQ(bench.text("DCC1"), "9999");
    EXPECT_FALSE(bench.window->isWindowModified());
    EXPECT_EQ(bench.kept.size(), 1U);
}

TEST(DccAdresse, KeepsWhatWasTypedInEachForm)
{
    WindowBench bench;
    DCC_Adresse window(bench.state.set, bench.prompts, bench.state.texts);
    window.show();
    typeInto(window, "3", "13");
    tick(window, "LongForm");
    typeInto(window, "500", "600");
    tick(window, "ShortForm");
    EXPECT_EQ(fieldOf(window, "Zweite_Adresse"), "13");
    typeInto(window, "", "");
    QTest::keyClick(&find<QLineEdit>(window, "Erste_Adresse"), Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "Enter writes nothing";
    bench.expectBox(Message::discardQuestion, "Weiter bearbeiten");
    window.close(); // the long addresses would be lost
    tick(window, "LongForm");
    EXPECT_EQ(fieldOf(window, "Erste_Adresse"), "500");
    window.hide();
}

TEST(ServoAddresse, WritesBothCvsOfEachServoThatIsTicked)
{
    WindowBench bench;
    bench.click("Start");
    bench.expect("Servo_Addresse", [](QWidget& dialog) {
        tick(dialog, "Servo1_AD", false);
        tick(dialog, "Servo2_AD", false);
        EXPECT_FALSE(find(dialog, "Command1").isEnabled());
        tick(dialog, "Servo1_AD");
        for (const char* const address : {"10000", "9999"}) {
            EXPECT_TRUE(dialog.isVisible());
            find<QLineEdit>(dialog, "Servo1_Adresse").setText(QString::fromLatin1(address));
            click(dialog, "Command1");
        }
    });
    bench.expect("refused");
    bench.expectBoxWith("CV11 + CV12  " + bench.message(Message::writtenNotice).toStdString());
    bench.click("Servo_Addr");
    EXPECT_EQ(bench.held(11), 39);
    EXPECT_EQ(bench.held(12), 15);
}

struct ServoBench : WindowBench {
    ServoBench()
    {
        showOfflineList();
        for (const auto& [cv, value] :
             {std::pair{112, 3}, {172, 100}, {173, 156}, {174, 20}, {175, 0}, {176, 10}})
            state.set.table.setValue(cv, value);
    }
    // The live values that the decoder has taken, "channel:value", each only where it differs from the one
    // before on its channel.
    std::string taken()
    {
        std::array<int, 4> last{-1, -1, -1, -1};
        std::string text;
        for (const auto& [channel, value] : port.simulator().liveValues()) {
            if (std::exchange(last[static_cast<std::size_t>(channel)], value) != value)
                text += std::to_string(channel) + ":" + std::to_string(value) + " ";
        }
        return text;
    }
    // A window that is opened, moves the servo, and is cancelled.
    template <typename Window>
    std::string tryOut()
    {
        Window dialog(bench, window.get());
        dialog.show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return port.simulator().liveValues().size() >= 5; }))
            << "by itself";
        driver.expect(QStringLiteral("DiscardQuestion"), [this](QWidget& box) {
            EXPECT_NE(taken().find("130"), std::string::npos) << "asked when the exchange has ended";
            box.close();
        });
        QTimer::singleShot(0, &dialog, &QDialog::reject); // comes in the wait for a reply
        test::find<QSlider>(dialog, "Slider173").setValue(130);
        EXPECT_NE(taken().find("130"), std::string::npos);
        EXPECT_TRUE(state.lineBusy) << "as long as the window stands open";
        expectBox(Message::discardQuestion, "Verwerfen");
        test::click(dialog, "CancelButton");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
        EXPECT_EQ(state.set.table.value(173), 156);
        EXPECT_NE(held(173), 130) << "nothing is stored";
        return taken();
    }
};

TEST(ServoWindow, TheServoFollowsAndIsPutBackWhenCancelled)
{
    EXPECT_EQ(ServoBench().tryOut<Servo_Setup2>(), "1:100 2:100 3:100 2:130 3:130 2:100 3:100 ");
    EXPECT_EQ(ServoBench().tryOut<Servo_Setup3>(), "1:100 2:100 3:100 2:130 2:100 ");
    EXPECT_EQ(ServoBench().tryOut<Servo_Setup4>(), "1:100 2:100 3:100 3:130 3:100 ");
}

TEST(ServoWindow, WritesWhatWasFound)
{
    ServoBench bench;
    bench.driver.expectLasting(QStringLiteral("Servo_Setup3"), [&](QWidget& dialog) {
        auto& number = find<QSpinBox>(dialog, "Number172");
        number.selectAll();
        QTest::keyClicks(&number, QStringLiteral("77"));
        EXPECT_EQ(find<QSlider>(dialog, "Slider172").value(), 100) << "not at its first digit";
        QTest::keyClick(&number, Qt::Key_Return);
        click(dialog, "OKButton");
    });
    bench.expectBox(Message::servoWritten);
    bench.choose("mnu_servo1");
    EXPECT_EQ(bench.held(172), 77);

    bench.driver.expectLasting(QStringLiteral("RZeit_Setup"), [&](QWidget& dialog) {
        find<QSlider>(dialog, "Slider175").setValue(8);
        EXPECT_EQ(find<QSlider>(dialog, "Slider175").value(), 0) << "only one of the times holds a value";
        find<QSlider>(dialog, "Slider174").setValue(33);
        click(dialog, "OKButton");
    });
    bench.expectBoxWith("CV174 muss 0 sein, wenn CV175 einen Wert enthält !\r\nCV175 wird auf 0 gesetzt.");
    bench.expectBox(Message::servoWritten);
    bench.choose("mnu_RZeit_setup");
    EXPECT_EQ(bench.held(174), 33);
}

TEST(ServoWindow, AServoWithoutPowerIsAskedAbout)
{
    ServoBench bench;
    bench.state.set.table.setValue(112, 0);
    Servo_Setup4 window(bench.bench, bench.window.get());
    const auto hint = QString::fromStdString(labelOf(window, "Hint")).section(QLatin1Char('\n'), 1);
    for (const bool yes : {false, true}) {
        bench.driver.expectBox(hint + QStringLiteral("\r\n") + bench.message(Message::writeServoQuestion),
                               yes ? QStringLiteral("Ja") : QStringLiteral("Nein"));
        click(window, "OKButton");
        EXPECT_EQ(window.result() == QDialog::Accepted, yes);
    }
}

} // namespace karvo::test
