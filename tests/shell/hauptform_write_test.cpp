// Writing from the main window to a simulated KV07.
#include "shell/window_bench.h"

#include <QCheckBox>
#include <QClipboard>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

namespace karvo::test
{
namespace
{

const QString ok = QStringLiteral("OK");

struct WriteWindowBench : WindowBench {
    explicit WriteWindowBench(const BenchSetup& setup = {}) : WindowBench(setup)
    {
        find<QPushButton>("Start").click();
        EXPECT_EQ(state.set.list.empty(), false);
    }
    void change(int cv, int value)
    {
        chooseCv(cv);
        find<QLineEdit>("CV_Wert").setText(QString::number(value));
        find<QPushButton>("Enter_Taste").click();
        ASSERT_EQ(state.set.table.value(cv), value);
    }
    int held(int cv) { return port.simulator().decoder().memory[static_cast<std::size_t>(cv - 1)]; }
    std::string lineOf(int cv)
    {
        return list().item(static_cast<int>(*positionOf(state.set.list, cv)))->text().toStdString();
    }
    void click(const char* button) { find<QPushButton>(button).click(); }

    // The preview comes next; `act` may change its ticks before the write goes on.
    void expectPreview(std::function<void(QWidget&)> act = [](QWidget&) {})
    {
        driver.expect(QStringLiteral("preview"), [act](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("Schreibvorschau"));
            act(dialog);
            dialog.findChild<QPushButton*>(QStringLiteral("OKButton"))->click();
        });
    }

    // The report comes next; its rows, as "CV2 9 12 geschrieben", are kept.
    void expectReport(const char* button = "Schliessen")
    {
        driver.expect(QStringLiteral("report"), [this, button](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("Schreibbericht"));
            const auto& table = *dialog.findChild<QTableWidget*>(QStringLiteral("Ergebnisse"));
            for (int row = 0; row < table.rowCount(); ++row)
                rows.push_back((table.item(row, 0)->text() + u' ' + table.item(row, 2)->text() + u' ' +
                                table.item(row, 3)->text() + u' ' + table.item(row, 4)->text())
                                   .toStdString());
            summary = dialog.findChild<QLabel*>(QStringLiteral("Zusammenfassung"))->text().toStdString();
            dialog.findChild<QPushButton*>(QStringLiteral("Kopieren"))->click();
            dialog.findChild<QPushButton*>(QString::fromLatin1(button))->click();
        });
    }

    std::vector<std::string> rows;
    std::string summary;
};

TEST(HauptformWrite, WritesTheCurrentCvAndTakesItsMarkAway)
{
    WriteWindowBench bench;
    const int before = bench.held(48);
    bench.change(48, before == 9 ? 8 : 9);
    EXPECT_NE(bench.lineOf(48).find("geändert"), std::string::npos);
    bench.click("Einzelne_speichern");
    EXPECT_EQ(bench.held(48), before == 9 ? 8 : 9);
    EXPECT_EQ(bench.lineOf(48).find("geändert"), std::string::npos);
    ASSERT_EQ(bench.kept.size(), 1U) << "what the vehicle held is kept first";
    EXPECT_EQ(bench.kept.front().table.value(48), before);
}

TEST(HauptformWrite, WritesWhatWasTypedAndNotTaken)
{
    WriteWindowBench bench;
    bench.chooseCv(48);
    bench.find<QLineEdit>("CV_Wert").setText(QStringLiteral("17"));
    bench.item("mnu_write_single").trigger();
    EXPECT_EQ(bench.held(48), 17);
    const int before = bench.held(2);
    bench.chooseCv(2);
    bench.find<QLineEdit>("CV_Wert").setText(QStringLiteral("201"));
    bench.driver.expect(QStringLiteral("limits"), [](QWidget& window) { window.close(); });
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_EQ(bench.held(2), before) << "a refused value is not written, nor the old one";
}

TEST(HauptformWrite, WritesTheChangedOnesAndReportsEach)
{
    WriteWindowBench bench;
    const auto before = std::to_string(bench.held(48));
    bench.change(48, 11);
    bench.change(52, 12);
    bench.expectPreview();
    bench.expectReport();
    bench.click("Alle_speichern");
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_EQ(bench.rows.front(), "CV48 " + before + " 11 geschrieben");
    EXPECT_EQ(bench.rows.size(), 2U);
    EXPECT_NE(bench.summary.find("2 von 2"), std::string::npos) << bench.summary;
    EXPECT_NE(bench.summary.find("kept.kvr"), std::string::npos) << bench.summary;
    const auto copied = QGuiApplication::clipboard()->text().toStdString();
    EXPECT_NE(copied.find("\t11\tgeschrieben"), std::string::npos) << copied;
    EXPECT_EQ(bench.held(48), 11);
    EXPECT_EQ(bench.held(52), 12);
    bench.driver.expect(QStringLiteral("nothing is left"), [](QWidget& dialog) {
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("OKButton"))->isEnabled());
        EXPECT_TRUE(
            dialog.findChild<QLabel*>(QStringLiteral("Anzahl"))->text().contains(QStringLiteral("Nichts")));
        dialog.findChild<QPushButton*>(QStringLiteral("CancelButton"))->click();
    });
    bench.click("Alle_speichern");
}

TEST(HauptformWrite, ThePreviewDecidesWhatIsWritten)
{
    WriteWindowBench bench;
    const int before = bench.held(1);
    for (const int cv : {1, 48, 52, 168})
        bench.change(cv, 21);
    const int kept = bench.held(48);
    bench.driver.expect(QStringLiteral("cancelled"), [](QWidget& dialog) { dialog.close(); });
    bench.click("Alle_speichern");
    EXPECT_TRUE(bench.kept.empty());
    EXPECT_EQ(bench.held(52) == 21, false);
    bench.expectPreview([](QWidget& dialog) {
        auto& table = *dialog.findChild<QTableWidget*>(QStringLiteral("Vorschau"));
        ASSERT_EQ(table.rowCount(), 8);
        EXPECT_EQ(table.item(0, 0)->text(), QStringLiteral("CV48"));
        EXPECT_EQ(table.item(0, 1)->text(), QStringLiteral("deutsch 48"));
        EXPECT_EQ(table.item(0, 3)->text(), QStringLiteral("21"));
        table.item(0, 0)->setCheckState(Qt::Unchecked);
        dialog.findChild<QCheckBox*>(QStringLiteral("Kennung_lassen"))->click();
        EXPECT_EQ(table.item(7, 0)->checkState(), Qt::Unchecked);
        EXPECT_EQ(table.item(3, 0)->checkState(), Qt::Unchecked) << "the series stays together";
        dialog.findChild<QCheckBox*>(QStringLiteral("Nicht_mehr_fragen"))->click();
        EXPECT_TRUE(
            dialog.findChild<QLabel*>(QStringLiteral("Anzahl"))->text().contains(QStringLiteral(": 1.")));
    });
    bench.expectReport();
    bench.click("Alle_speichern");
    EXPECT_EQ(bench.held(52), 21);
    EXPECT_EQ(bench.held(48), kept);
    EXPECT_EQ(bench.held(1), before);
    bench.expectReport(); // without a preview, and what was left out stays out
    bench.click("Alle_speichern");
    EXPECT_EQ(bench.held(48), kept);
    EXPECT_EQ(bench.held(1), before);
}

TEST(HauptformWrite, GoesOnWithTheRestAfterAStop)
{
    WriteWindowBench bench;
    for (const int cv : {48, 52, 53})
        bench.change(cv, 21);
    const auto stopping =
        QObject::connect(&bench.view, &MainWindowView::writeProgressShown, [&](int cv, std::size_t) {
            if (cv == 48)
                bench.state.stopRequested = true;
        });
    bench.expectPreview();
    bench.expectReport("Rest_schreiben");
    bench.expectPreview();
    bench.expectReport();
    bench.click("Alle_speichern");
    EXPECT_EQ(bench.rows.size(), 5U) << "three, and the two that were left";
    EXPECT_EQ(bench.held(53), 21);
    QObject::disconnect(stopping);
}

TEST(HauptformWrite, StopsBetweenTwoCvsAndLeavesTheRestMarked)
{
    WriteWindowBench bench;
    for (const int cv : {48, 52, 53})
        bench.change(cv, 21);
    std::string progress;
    QObject::connect(&bench.view, &MainWindowView::writeProgressShown, [&](int cv, std::size_t remaining) {
        if (cv != 48)
            return;
        EXPECT_EQ(remaining, 2U);
        QTimer::singleShot(0, bench.window.get(), [&] {
            progress = bench.find<QProgressBar>("Progress").format().toStdString();
            EXPECT_FALSE(bench.find<QPushButton>("Alle_speichern").isEnabled());
            EXPECT_FALSE(bench.find<QPushButton>("Zuruecknehmen").isEnabled());
            EXPECT_TRUE(bench.find<QPushButton>("Anhalten").isVisible());
            bench.window->activateWindow(); // after the preview
            EXPECT_TRUE(QTest::qWaitForWindowActive(bench.window.get()));
            QTest::keyClick(bench.window.get(), Qt::Key_Escape);
            EXPECT_FALSE(bench.find<QPushButton>("Anhalten").isEnabled());
        });
    });
    bench.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(bench.window.get()));
    bench.expectPreview();
    bench.expectReport();
    bench.click("Alle_speichern");
    EXPECT_EQ(progress, "CV48, noch 2");
    EXPECT_EQ(bench.lineOf(48).find("geändert"), std::string::npos);
    EXPECT_NE(bench.lineOf(52).find("geändert"), std::string::npos);
    EXPECT_NE(bench.held(53), 21);
    EXPECT_NE(bench.summary.find("Sie haben angehalten."), std::string::npos) << bench.summary;
    EXPECT_FALSE(bench.find<QPushButton>("Anhalten").isVisible());
    EXPECT_FALSE(bench.find<QProgressBar>("Progress").isVisible());
}

TEST(HauptformWrite, WritesTheSeriesFromItsTimer)
{
    WriteWindowBench bench;
    bench.change(168, 33);
    bench.expectReport();
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.find<QTimer>("Timer4").isActive());
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); }));
    EXPECT_FALSE(bench.find<QTimer>("Timer4").isActive());
    EXPECT_EQ(bench.rows.size(), 5U);
    EXPECT_EQ(bench.held(168), 33);
}

TEST(HauptformWrite, ConfirmsEachWriteOnlyWhereThatIsWanted)
{
    WriteWindowBench bench;
    auto& notice = bench.find<QCheckBox>("Hinweis_nach_Schreiben");
    EXPECT_FALSE(notice.isChecked());
    notice.click();
    EXPECT_EQ(bench.settings.get("Window", "NoticeAfterWrite"), u"1");
    bench.chooseCv(48);
    bench.driver.expect(QStringLiteral("notice"), [](QWidget& window) {
        const auto text = dynamic_cast<QMessageBox&>(window).text().toStdString();
        EXPECT_EQ(text.rfind("CV 48  ", 0), 0U) << text;
        window.close();
    });
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.driver.isDone());
    notice.click();
    EXPECT_EQ(bench.settings.get("Window", "NoticeAfterWrite"), u"0");
    bench.click("Einzelne_speichern"); // no box
}

TEST(HauptformWrite, ClosesAfterTheCvThatIsBeingWritten)
{
    WriteWindowBench bench;
    bench.change(48, 31);
    bench.change(52, 31);
    QObject::connect(&bench.view, &MainWindowView::writeProgressShown,
                     [&](int cv, std::size_t /*remaining*/) {
                         if (cv == 48)
                             QTimer::singleShot(0, bench.window.get(), [&] {
                                 bench.window->close();
                                 EXPECT_TRUE(bench.window->isVisible());
                             });
                     });
    bench.expectPreview();
    bench.driver.expectBox(bench.message(Message::unsavedChangesQuestion), QStringLiteral("Verwerfen"));
    bench.click("Alle_speichern");
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(bench.held(48), 31) << "what had been begun came to its end";
    EXPECT_NE(bench.held(52), 31);
}

} // namespace
} // namespace karvo::test
