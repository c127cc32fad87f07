// Writing from the main window to a simulated KV07.
#include "shell/window_bench.h"

#include <QCheckBox>
#include <QClipboard>
#include <QProgressBar>
#include <QTableWidget>
#include <QTimer>

namespace karvo::test
{

struct WriteWindowBench : WindowBench {
    WriteWindowBench()
    {
        click("Start");
        EXPECT_FALSE(state.set.list.empty());
    }
    void change(const std::vector<int>& cvs, int value)
    {
        for (const int cv : cvs) {
            chooseCv(cv);
            find<QLineEdit>("CV_Wert").setText(QString::number(value));
            click("Enter_Taste");
            ASSERT_EQ(state.set.table.value(cv), value);
        }
    }
    bool isMarked(int cv) { return lineOf(cv).find("geändert") != std::string::npos; }
    void writeChanged() { click("Alle_speichern"); }
    // Once the CV is about to be written.
    void whileWriting(int wanted, std::function<void()> act)
    {
        QObject::connect(&view, &MainWindowView::writeProgressShown, window.get(),
                         [wanted, act = std::move(act)](int cv, std::size_t) {
                             if (cv == wanted)
                                 act();
                         });
    }

    // The preview comes next; `act` may change its ticks before the write goes on.
    void expectPreview(std::function<void(QWidget&)> act = [](QWidget&) {})
    {
        expect("preview", [act](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("Schreibvorschau"));
            act(dialog);
            test::click(dialog, "OKButton");
        });
    }

    // The report comes next; its rows, as "CV2 9 12 geschrieben", are kept.
    void expectReport(const char* button = "Schliessen")
    {
        expect("report", [this, button](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("Schreibbericht"));
            const auto& table = test::find<QTableWidget>(dialog, "Ergebnisse");
            for (int row = 0; row < table.rowCount(); ++row)
                rows.push_back((table.item(row, 0)->text() + u' ' + table.item(row, 2)->text() + u' ' +
                                table.item(row, 3)->text() + u' ' + table.item(row, 4)->text())
                                   .toStdString());
            summary = labelOf(dialog, "Zusammenfassung");
            test::click(dialog, "Kopieren");
            test::click(dialog, button);
        });
    }

    std::vector<std::string> rows;
    std::string summary;
};

TEST(HauptformWrite, WritesTheCurrentCvAsItIsTypedAndTakesItsMarkAway)
{
    WriteWindowBench bench;
    const int before = bench.held(48);
    bench.change({48}, before == 9 ? 8 : 9);
    EXPECT_TRUE(bench.isMarked(48));
    bench.click("Einzelne_speichern");
    EXPECT_EQ(bench.held(48), before == 9 ? 8 : 9);
    EXPECT_FALSE(bench.isMarked(48));
    ASSERT_EQ(bench.kept.size(), 1U) << "what the vehicle held is kept first";
    EXPECT_EQ(bench.kept.front().table.value(48), before);

    bench.find<QLineEdit>("CV_Wert").setText(QStringLiteral("17")); // and not taken
    bench.choose("mnu_write_single");
    EXPECT_EQ(bench.held(48), 17);
    const int second = bench.held(2);
    bench.chooseCv(2);
    bench.find<QLineEdit>("CV_Wert").setText(QStringLiteral("201"));
    bench.expect("limits");
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_EQ(bench.held(2), second) << "a refused value is not written, nor the old one";
}

TEST(HauptformWrite, WritesTheChangedOnesAndReportsEach)
{
    WriteWindowBench bench;
    const auto before = std::to_string(bench.held(48));
    bench.change({48, 52}, 11);
    bench.expectPreview();
    bench.expectReport();
    bench.writeChanged();
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_EQ(bench.rows.front(), "CV48 " + before + " 11 geschrieben");
    EXPECT_EQ(bench.rows.size(), 2U);
    EXPECT_NE(bench.summary.find("2 von 2"), std::string::npos) << bench.summary;
    EXPECT_NE(bench.summary.find("kept.kvr"), std::string::npos) << bench.summary;
    const auto copied = QGuiApplication::clipboard()->text().toStdString();
    EXPECT_NE(copied.find("\t11\tgeschrieben"), std::string::npos) << copied;
    EXPECT_EQ(bench.held(48) + bench.held(52), 22);
    bench.expect("nothing is left", [](QWidget& dialog) {
        EXPECT_FALSE(find(dialog, "OKButton").isEnabled());
        EXPECT_NE(labelOf(dialog, "Anzahl").find("Nichts"), std::string::npos);
        click(dialog, "CancelButton");
    });
    bench.writeChanged();
}

TEST(HauptformWrite, ThePreviewDecidesWhatIsWritten)
{
    WriteWindowBench bench;
    const auto address = bench.held(1);
    const auto kept = bench.held(48);
    bench.change({1, 48, 52, 168}, 21);
    bench.expect("cancelled");
    bench.writeChanged();
    EXPECT_TRUE(bench.kept.empty());
    EXPECT_NE(bench.held(52), 21);
    bench.expectPreview([](QWidget& dialog) {
        auto& table = find<QTableWidget>(dialog, "Vorschau");
        ASSERT_EQ(table.rowCount(), 8);
        EXPECT_EQ(table.item(0, 0)->text() + table.item(0, 1)->text() + table.item(0, 3)->text(),
                  QStringLiteral("CV48deutsch 4821"));
        table.item(0, 0)->setCheckState(Qt::Unchecked);
        click(dialog, "Kennung_lassen");
        EXPECT_EQ(table.item(7, 0)->checkState(), Qt::Unchecked);
        EXPECT_EQ(table.item(3, 0)->checkState(), Qt::Unchecked) << "the series stays together";
        click(dialog, "Nicht_mehr_fragen");
        EXPECT_NE(labelOf(dialog, "Anzahl").find(": 1."), std::string::npos);
    });
    bench.expectReport();
    bench.writeChanged();
    EXPECT_EQ(bench.held(52), 21);
    bench.expectReport(); // without a preview, and what was left out stays out
    bench.writeChanged();
    EXPECT_EQ(bench.held(48), kept);
    EXPECT_EQ(bench.held(1), address);
}

TEST(HauptformWrite, StopsBetweenTwoCvsLeavesTheRestMarkedAndGoesOnWithIt)
{
    WriteWindowBench bench;
    bench.change({48, 52, 53}, 21);
    std::string progress;
    bench.whileWriting(48, [&] {
        QTimer::singleShot(0, bench.window.get(), [&] {
            progress = bench.find<QProgressBar>("Progress").format().toStdString();
            EXPECT_FALSE(bench.isEnabled("Alle_speichern") || bench.isEnabled("Zuruecknehmen"));
            EXPECT_TRUE(bench.find<QWidget>("Anhalten").isVisible());
            bench.press(Qt::Key_Escape);
            EXPECT_FALSE(bench.isEnabled("Anhalten"));
        });
    });
    bench.expectPreview();
    bench.expect("report", [&](QWidget& dialog) {
        EXPECT_NE(labelOf(dialog, "Zusammenfassung").find("Sie haben angehalten."), std::string::npos);
        EXPECT_FALSE(bench.isMarked(48));
        EXPECT_TRUE(bench.isMarked(52));
        EXPECT_NE(bench.held(53), 21);
        click(dialog, "Rest_schreiben");
    });
    bench.expectPreview();
    bench.expectReport();
    bench.writeChanged();
    EXPECT_EQ(progress, "CV48, noch 2");
    EXPECT_EQ(bench.rows.size(), 2U) << "those that were left";
    EXPECT_EQ(bench.held(53), 21);
    EXPECT_FALSE(bench.find<QWidget>("Anhalten").isVisible() || bench.find<QWidget>("Progress").isVisible());
}

TEST(HauptformWrite, WritesTheSeriesFromItsTimer)
{
    WriteWindowBench bench;
    bench.change({168}, 33);
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
    bench.chooseCv(48);
    EXPECT_FALSE(bench.find<QCheckBox>("Hinweis_nach_Schreiben").isChecked());
    bench.click("Hinweis_nach_Schreiben");
    EXPECT_EQ(bench.settings.get("Window", "NoticeAfterWrite"), u"1");
    bench.expectBoxWith("CV 48  ");
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.driver.isDone());
    bench.click("Hinweis_nach_Schreiben");
    EXPECT_EQ(bench.settings.get("Window", "NoticeAfterWrite"), u"0");
    bench.click("Einzelne_speichern"); // no box
}

TEST(HauptformWrite, ClosesAfterTheCvThatIsBeingWritten)
{
    WriteWindowBench bench;
    bench.change({48, 52}, 31);
    bench.whileWriting(48, [&] {
        QTimer::singleShot(0, bench.window.get(), [&] {
            bench.window->close();
            EXPECT_TRUE(bench.window->isVisible());
        });
    });
    bench.expectPreview();
    bench.expectBox(Message::unsavedChangesQuestion, "Verwerfen");
    bench.writeChanged();
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(bench.held(48), 31) << "what had been begun came to its end";
    EXPECT_NE(bench.held(52), 31);
}

} // namespace karvo::test
