#include "editors/forms/live_dialog.h"

#include "shell/window_bench.h"
#include "ui/captions.h"

#include <QSlider>
#include <QSpinBox>

namespace karvo::test
{

struct ServoBench : WindowBench {
    explicit ServoBench(const BenchSetup& setup = {}) : WindowBench(setup)
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
    void tryOut(const char* name, const char* expected)
    {
        const auto before = port.simulator().decoder().memory;
        Window dialog(bench, window.get());
        EXPECT_EQ(dialog.objectName().toStdString(), name);
        EXPECT_EQ(test::find<QTimer>(dialog, "Timer1").interval(), 200);
        dialog.show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return port.simulator().liveValues().size() >= 5; }))
            << "on opening and by itself";
        test::find<QSlider>(dialog, "Slider173").setValue(130);
        EXPECT_EQ(test::find<QSpinBox>(dialog, "Number173").value(), 130);
        EXPECT_TRUE(QTest::qWaitFor([&] { return taken().find("130") != std::string::npos; }, 150));
        EXPECT_EQ(test::find<QLabel>(dialog, "Note").text(),
                  qtText(state.texts.caption(Caption::liveRunning)));
        EXPECT_TRUE(state.lineBusy) << "as long as the window stands open";
        test::click(dialog, "CancelButton");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
        EXPECT_EQ(taken(), expected) << name;
        EXPECT_EQ(state.set.table.value(173), 156);
        EXPECT_EQ(port.simulator().decoder().memory, before) << "nothing is stored";
    }
};

TEST(ServoWindow, TheServoFollowsAndIsPutBackWhenCancelled)
{
    ServoBench().tryOut<Servo_Setup2>("Servo_Setup2", "1:100 2:100 3:100 2:130 3:130 2:100 3:100 ");
    ServoBench().tryOut<Servo_Setup3>("Servo_Setup3", "1:100 2:100 3:100 2:130 2:100 ");
    ServoBench().tryOut<Servo_Setup4>("Servo_Setup4", "1:100 2:100 3:100 3:130 3:100 ");
}

TEST(ServoSetup, WritesWhatWasFound)
{
    ServoBench bench;
    bench.driver.expectLasting(QStringLiteral("Servo_Setup3"), [&](QWidget& dialog) {
        auto& number = find<QSpinBox>(dialog, "Number172");
        auto& slider = find<QSlider>(dialog, "Slider172");
        number.setFocus();
        number.selectAll();
        QTest::keyClicks(&number, QStringLiteral("77"));
        EXPECT_EQ(slider.value(), 100) << "not at its first digit";
        QTest::keyClick(&number, Qt::Key_Return);
        EXPECT_EQ(slider.value(), 77);
        find<QSlider>(dialog, "Slider176").setValue(30);
        click(dialog, "OKButton");
    });
    bench.expectBox(Message::servoWritten);
    bench.choose("mnu_servo1");
    EXPECT_EQ(bench.held(172), 77);
    EXPECT_EQ(bench.held(173), 156);
    EXPECT_EQ(bench.held(176), 30);
    EXPECT_EQ(bench.state.set.table.value(172), 77);
}

TEST(ServoSetup, OnlyOneOfTheTimesHoldsAValue)
{
    ServoBench bench;
    bench.driver.expectLasting(QStringLiteral("RZeit_Setup"), [&](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName().toStdString(), "RZeit_Setup");
        find<QSlider>(dialog, "Slider175").setValue(8);
        EXPECT_EQ(find<QSlider>(dialog, "Slider175").value(), 0);
        find<QSlider>(dialog, "Slider174").setValue(33);
        click(dialog, "OKButton");
    });
    bench.expectBoxWith("CV174 muss 0 sein, wenn CV175 einen Wert enthält !\r\nCV175 wird auf 0 gesetzt.");
    bench.expectBox(Message::servoWritten);
    bench.choose("mnu_RZeit_setup");
    EXPECT_EQ(bench.held(174), 33);
    EXPECT_EQ(bench.held(175), 0);
    EXPECT_TRUE(bench.taken().starts_with("1:156 ")) << bench.taken();
}

TEST(ServoSetup, AServoWithoutPowerIsToldAndAskedAbout)
{
    ServoBench bench;
    bench.state.set.table.setValue(112, 0);
    Servo_Setup4 window(bench.bench, bench.window.get());
    const auto words = servoWithoutPower(LiveWindow::secondServo, bench.state.set, bench.state.texts);
    ASSERT_TRUE(words);
    EXPECT_TRUE(find<QLabel>(window, "Hint").text().endsWith(QLatin1Char('\n') + qtText(*words)));
    for (const bool yes : {false, true}) {
        bench.driver.expectBox(qtText(*words) + QStringLiteral("\r\n") +
                                   bench.message(Message::writeServoQuestion),
                               yes ? QStringLiteral("Ja") : QStringLiteral("Nein"));
        click(window, "OKButton");
        EXPECT_EQ(window.result(), yes ? QDialog::Accepted : QDialog::Rejected);
    }
}

} // namespace karvo::test
