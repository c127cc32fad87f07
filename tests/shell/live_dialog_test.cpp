#include "editors/forms/live_dialog.h"
#include "ui/captions.h"
#include "window_bench.h"

#include <QPushButton>
#include <QSlider>
#include <QSpinBox>

namespace karvo::test
{
namespace
{

struct ServoBench : WindowBench {
    explicit ServoBench(const BenchSetup& setup = {}) : WindowBench(setup)
    {
        showOfflineList();
        for (const auto& [cv, value] :
             {std::pair{112, 3}, {172, 100}, {173, 156}, {174, 20}, {175, 0}, {176, 10}})
            state.set.table.setValue(cv, value);
    }

    template <typename Control>
    static Control& in(QWidget& dialog, const char* name)
    {
        auto* const control = dialog.findChild<Control*>(QString::fromLatin1(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
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
    std::size_t count() { return port.simulator().liveValues().size(); }
    int inVehicle(int cv) { return port.simulator().decoder().memory[static_cast<std::size_t>(cv - 1)]; }
};

} // namespace

template <typename Window>
class ServoWindow : public testing::Test
{
};

struct TakenByWindow {
    std::string name;
    std::string taken;
};
TakenByWindow expectedOf(const Servo_Setup2*)
{
    return {"Servo_Setup2", "1:100 2:100 3:100 2:130 3:130 2:100 3:100 "};
}
TakenByWindow expectedOf(const Servo_Setup3*)
{
    return {"Servo_Setup3", "1:100 2:100 3:100 2:130 2:100 "};
}
TakenByWindow expectedOf(const Servo_Setup4*)
{
    return {"Servo_Setup4", "1:100 2:100 3:100 3:130 3:100 "};
}

using ServoWindows = testing::Types<Servo_Setup2, Servo_Setup3, Servo_Setup4>;
TYPED_TEST_SUITE(ServoWindow, ServoWindows);

TYPED_TEST(ServoWindow, TheServoFollowsAndIsPutBackWhenCancelled)
{
    ServoBench bench;
    const auto before = bench.port.simulator().decoder().memory;
    TypeParam window(bench.bench, bench.window.get());
    const auto expected = expectedOf(&window);
    EXPECT_EQ(window.objectName().toStdString(), expected.name);
    EXPECT_EQ(ServoBench::in<QTimer>(window, "Timer1").interval(), 200);
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.count() >= 5; })) << "on opening and by itself";
    ServoBench::in<QSlider>(window, "Slider173").setValue(130);
    EXPECT_EQ(ServoBench::in<QSpinBox>(window, "Number173").value(), 130);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.taken().find("130") != std::string::npos; }, 150));
    EXPECT_TRUE(bench.state.lineBusy) << "as long as the window stands open";
    ServoBench::in<QPushButton>(window, "CancelButton").click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
    EXPECT_EQ(bench.taken(), expected.taken);
    EXPECT_EQ(bench.state.set.table.value(173), 156);
    EXPECT_EQ(bench.port.simulator().decoder().memory, before) << "nothing is stored";
}

TEST(ServoSetup, WritesWhatWasFound)
{
    ServoBench bench;
    bench.driver.expectLasting(QStringLiteral("Servo_Setup3"), [&](QWidget& dialog) {
        auto& number = ServoBench::in<QSpinBox>(dialog, "Number172");
        number.setFocus();
        number.selectAll();
        QTest::keyClicks(&number, QStringLiteral("77"));
        EXPECT_EQ(ServoBench::in<QSlider>(dialog, "Slider172").value(), 100) << "not at its first digit";
        QTest::keyClick(&number, Qt::Key_Return);
        EXPECT_EQ(ServoBench::in<QSlider>(dialog, "Slider172").value(), 77);
        ServoBench::in<QSlider>(dialog, "Slider176").setValue(30);
        ServoBench::in<QPushButton>(dialog, "OKButton").click();
    });
    bench.driver.expectBox(bench.message(Message::servoWritten), QStringLiteral("OK"));
    bench.item("mnu_servo1").trigger();
    EXPECT_EQ(bench.inVehicle(172), 77);
    EXPECT_EQ(bench.inVehicle(173), 156);
    EXPECT_EQ(bench.inVehicle(176), 30);
    EXPECT_EQ(bench.state.set.table.value(172), 77);
}

TEST(ServoSetup, OnlyOneOfTheTimesHoldsAValue)
{
    ServoBench bench;
    bench.driver.expectLasting(QStringLiteral("RZeit_Setup"), [&](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName().toStdString(), "RZeit_Setup");
        ServoBench::in<QSlider>(dialog, "Slider175").setValue(8);
        EXPECT_EQ(ServoBench::in<QSlider>(dialog, "Slider175").value(), 0);
        ServoBench::in<QSlider>(dialog, "Slider174").setValue(33);
        ServoBench::in<QPushButton>(dialog, "OKButton").click();
    });
    bench.driver.expectBox(QStringLiteral("CV174 muss 0 sein, wenn CV175 einen Wert enthält !\r\n"
                                          "CV175 wird auf 0 gesetzt."),
                           QStringLiteral("OK"));
    bench.driver.expectBox(bench.message(Message::servoWritten), QStringLiteral("OK"));
    bench.item("mnu_RZeit_setup").trigger();
    EXPECT_EQ(bench.inVehicle(174), 33);
    EXPECT_EQ(bench.inVehicle(175), 0);
    EXPECT_TRUE(bench.taken().starts_with("1:156 ")) << bench.taken();
}

TEST(ServoSetup, ARefusalIsToldOnceAndTheWindowStays)
{
    ServoBench bench({.fault = sim::Fault::refusedCommand});
    Servo_Setup2 window(bench.bench, bench.window.get());
    auto& note = ServoBench::in<QLabel>(window, "Note");
    const auto says = [&](Caption caption) {
        return note.text() == qtText(bench.state.texts.caption(caption));
    };
    bench.driver.expectBox(bench.message(Message::announcementRefused), QStringLiteral("OK"));
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return says(Caption::liveStopped); }));
    QTest::qWait(500); // for the ticks that must not come
    bench.port.simulator().setFault(sim::Fault::none);
    ServoBench::in<QSlider>(window, "Slider172").setValue(90);
    EXPECT_TRUE(QTest::qWaitFor([&] { return says(Caption::liveRunning); }));
    window.reject();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
    EXPECT_EQ(bench.taken(), "2:90 3:90 2:100 3:100 ");
}

TEST(ServoSetup, AServoWithoutPowerIsToldAndAskedAbout)
{
    ServoBench bench;
    bench.state.set.table.setValue(112, 0);
    Servo_Setup4 window(bench.bench, bench.window.get());
    const auto words = servoWithoutPower(LiveWindow::secondServo, bench.state.set, bench.state.texts);
    ASSERT_TRUE(words);
    EXPECT_EQ(ServoBench::in<QLabel>(window, "Hint").text(),
              qtText(bench.state.texts.caption(Caption::servosShareCvs)) + QLatin1Char('\n') +
                  qtText(*words));
    const auto question =
        qtText(*words) + QStringLiteral("\r\n") + bench.message(Message::writeServoQuestion);
    bench.driver.expectBox(question, QStringLiteral("Nein"));
    ServoBench::in<QPushButton>(window, "OKButton").click();
    EXPECT_EQ(window.result(), QDialog::Rejected);
    bench.driver.expectBox(question, QStringLiteral("Ja"));
    ServoBench::in<QPushButton>(window, "OKButton").click();
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

} // namespace karvo::test
