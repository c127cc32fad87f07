// The DCC addresses in the main window, written to a simulated decoder.
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

} // namespace karvo::test
