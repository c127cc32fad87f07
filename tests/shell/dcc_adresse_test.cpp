// The DCC addresses in the main window, written to a simulated decoder.
#include "editors/forms/dcc_adresse.h"
#include "window_bench.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

namespace karvo::test
{
namespace
{

struct AddressBench : WindowBench {
    AddressBench()
    {
        find<QPushButton>("Start").click();
        EXPECT_GT(list().count(), 170);
    }

    int held(int cv) { return port.simulator().decoder().memory[static_cast<std::size_t>(cv) - 1]; }

    // The dialog; `act` fills it in, and `button` ends it.
    void expectDialog(const std::function<void(QDialog&)>& act, const char* button)
    {
        driver.expect(QStringLiteral("DCC_Adresse"), [act, button](QWidget& box) {
            auto& dialog = dynamic_cast<QDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "DCC_Adresse");
            act(dialog);
            dialog.findChild<QPushButton*>(QString::fromLatin1(button))->click();
        });
    }
    static void type(QDialog& dialog, const char* first, const char* second)
    {
        dialog.findChild<QLineEdit*>(QStringLiteral("Erste_Adresse"))->setText(QString::fromLatin1(first));
        dialog.findChild<QLineEdit*>(QStringLiteral("Zweite_Adresse"))->setText(QString::fromLatin1(second));
    }
};

} // namespace

TEST(DccAdresse, WritesLongAddressesAndShowsThem)
{
    AddressBench bench;
    bench.expectDialog(
        [](QDialog& dialog) {
            auto* const field = dialog.findChild<QLineEdit*>(QStringLiteral("Erste_Adresse"));
            EXPECT_EQ(field->text().toStdString(), "3");
            dialog.findChild<QRadioButton*>(QStringLiteral("LongForm"))->setChecked(true);
            EXPECT_EQ(field->text().toStdString(), "128");
            AddressBench::type(dialog, "9999", "300");
            dialog.findChild<QCheckBox*>(QStringLiteral("Check2"))->setChecked(true);
            EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("Plan"))->text().toStdString(),
                      "CV17 = 39\nCV18 = 15\nCV15 = 1\nCV16 = 44\nCV29 = 32\nCV21 = 19");
        },
        "Command1");
    bench.driver.expectBox(bench.message(Message::addressesWritten), QStringLiteral("OK"));
    bench.item("mnu_dcc_adresse").trigger();
    for (const auto& [cv, value] : {std::pair{17, 39}, {18, 15}, {15, 1}, {16, 44}, {29, 32}, {21, 19}}) {
        EXPECT_EQ(bench.held(cv), value) << cv;
        EXPECT_EQ(bench.state.set.table.value(cv), value) << cv;
    }
    EXPECT_EQ(bench.text("DCC1"), "9999");
    EXPECT_FALSE(bench.window->isWindowModified());
    EXPECT_EQ(bench.kept.size(), 1U);
}

TEST(DccAdresse, AWrongAddressWritesNothing)
{
    AddressBench bench;
    bench.expectDialog(
        [](QDialog& dialog) {
            AddressBench::type(dialog, "12", "127");
            dialog.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
            EXPECT_TRUE(dialog.isVisible()) << "to be mended";
        },
        "Command2");
    bench.driver.expectBox(bench.message(Message::secondShortAddressWrong), QStringLiteral("OK"));
    bench.driver.expectBox(bench.message(Message::discardQuestion), QStringLiteral("Verwerfen"));
    bench.item("mnu_dcc_adresse").trigger();
    EXPECT_EQ(bench.held(1), 3);
    EXPECT_TRUE(bench.kept.empty());
}

TEST(DccAdresse, WhatWasNotWrittenIsTold)
{
    AddressBench bench;
    bench.port.simulator().setFault(sim::Fault::refusedCommand);
    bench.expectDialog([](QDialog& dialog) { AddressBench::type(dialog, "12", "13"); }, "Command1");
    bench.driver.expectBox(bench.message(Message::announcementRefused), QStringLiteral("OK"));
    bench.driver.expect(QStringLiteral("report"), [](QWidget& box) {
        EXPECT_EQ(box.objectName().toStdString(), "Schreibbericht");
        box.close();
    });
    bench.item("mnu_dcc_adresse").trigger();
    EXPECT_EQ(bench.held(1), 3);
    EXPECT_EQ(bench.state.set.table.value(1), 12) << "it stays in the list, marked";
    EXPECT_TRUE(bench.state.set.list[0].changed);
}

TEST(DccAdresse, KeepsWhatWasTypedInEachForm)
{
    AddressBench bench;
    DCC_Adresse window(bench.state.set, bench.prompts, bench.state.texts);
    window.show();
    auto& longForm = *window.findChild<QRadioButton*>(QStringLiteral("LongForm"));
    const auto shown = [&] {
        return window.findChild<QLineEdit*>(QStringLiteral("Erste_Adresse"))->text().toStdString() + " " +
               window.findChild<QLineEdit*>(QStringLiteral("Zweite_Adresse"))->text().toStdString();
    };
    AddressBench::type(window, "12", "13");
    longForm.setChecked(true);
    AddressBench::type(window, "500", "600");
    window.findChild<QRadioButton*>(QStringLiteral("ShortForm"))->setChecked(true);
    EXPECT_EQ(shown(), "12 13");
    AddressBench::type(window, "3", "4");
    QTest::keyClick(window.findChild<QLineEdit*>(QStringLiteral("Erste_Adresse")), Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "Enter writes nothing";
    bench.driver.expectBox(bench.message(Message::discardQuestion), QStringLiteral("Weiter bearbeiten"));
    window.close(); // the long addresses would be lost
    longForm.setChecked(true);
    EXPECT_EQ(shown(), "500 600");
    window.hide();
}

TEST(DccAdresse, AskedFirstWhereNoAddressIsTicked)
{
    AddressBench bench;
    bench.expectDialog(
        [](QDialog& dialog) {
            for (const char* const tick : {"Erste_AD", "Zweite_AD"})
                dialog.findChild<QCheckBox*>(QString::fromLatin1(tick))->setChecked(false);
            dialog.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
            EXPECT_TRUE(dialog.isVisible());
            for (const char* const tick : {"Erste_AD", "Zweite_AD"})
                dialog.findChild<QCheckBox*>(QString::fromLatin1(tick))->setChecked(true);
        },
        "Command2");
    bench.driver.expect(QStringLiteral("only the switches"), [](QWidget& box) { box.close(); });
    bench.item("mnu_dcc_adresse").trigger();
    EXPECT_TRUE(bench.kept.empty());
}

TEST(ServoAddresse, WritesBothCvsOfEachServoThatIsTicked)
{
    AddressBench bench;
    bench.driver.expect(QStringLiteral("Servo_Addresse"), [](QWidget& dialog) {
        auto* const writing = dialog.findChild<QPushButton*>(QStringLiteral("Command1"));
        auto* const second = dialog.findChild<QCheckBox*>(QStringLiteral("Servo2_AD"));
        auto* const first = dialog.findChild<QCheckBox*>(QStringLiteral("Servo1_AD"));
        first->setChecked(false);
        second->setChecked(false);
        EXPECT_FALSE(writing->isEnabled());
        first->setChecked(true);
        dialog.findChild<QLineEdit*>(QStringLiteral("Servo1_Adresse"))->setText(QStringLiteral("10000"));
        writing->click();
        EXPECT_TRUE(dialog.isVisible());
        dialog.findChild<QLineEdit*>(QStringLiteral("Servo1_Adresse"))->setText(QStringLiteral("9999"));
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("Plan"))->text().toStdString(),
                  "CV11 = 39\nCV12 = 15");
        writing->click();
    });
    bench.driver.expect(QStringLiteral("refused"), [](QWidget& box) { box.close(); });
    bench.driver.expectBox(QStringLiteral("CV11 + CV12  ") + bench.message(Message::writtenNotice),
                           QStringLiteral("OK"));
    bench.find<QPushButton>("Servo_Addr").click();
    EXPECT_EQ(bench.held(11), 39);
    EXPECT_EQ(bench.held(12), 15);
}

} // namespace karvo::test
