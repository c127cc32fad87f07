// Reading and writing from the main window: what it shows and allows meanwhile, and how it comes out of it.
#include "shell/window_bench.h"

#include <QClipboard>
#include <QProgressBar>
#include <QSpinBox>
#include <QTableWidget>

namespace karvo::test
{

struct ReadBench : WindowBench {
    explicit ReadBench(sim::Fault fault, sim::Pace pace = sim::Pace::none)
        : WindowBench({.pace = pace, .fault = fault})
    {
    }
    // Reads, and does what ends the read while it waits for its reply.
    void readUntil(const std::function<void()>& act)
    {
        QElapsedTimer since;
        QTimer ticking;
        QObject::connect(&ticking, &QTimer::timeout, window.get(), [&] {
            if (!find<QWidget>("Anhalten").isVisible()) // a question stands before the read
                return;
            ticking.stop();
            since.start();
            act();
        });
        ticking.start(100);
        click("Start");
        ASSERT_TRUE(since.isValid()) << "it was over too soon";
        EXPECT_LT(since.elapsed(), 1500) << "it waited for the reply";
    }
    // CV1 to CV176, and the battery's voltage.
    bool hasRead() { return list().count() == 177; }
};

TEST(HauptformRead, ReportsAFaultAndFillsTheListFromButtonKeyAndTimer)
{
    ReadBench bench(sim::Fault::wrongCheckByte);
    bench.showOfflineList();
    bench.expectBox(Message::wrongCheckByte);
    bench.click("Start");
    EXPECT_TRUE(bench.driver.isDone() && bench.hasFocus("Start"));
    EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Liste ohne Fahrzeug") << "the list stays";
    bench.port.simulator().setFault(sim::Fault::none);
    bench.click("Start");
    EXPECT_TRUE(bench.hasRead());
    EXPECT_EQ(bench.lineOf(1), "CV1  = 3");
    EXPECT_EQ(bench.texts("Programm_Kennung Adresse DCC1 DCC2 Version Status"),
              "KV07  Firmware = 6  Sublevel = 2  ATmega328|Adresse: 3 (kurz)|3|4|V01_23|176 CVs|");
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Firmware = 6  Sublevel = 2 | CV_Standart_kv07.txt[*]");
    bench.choose("mnu_clear");
    bench.press(Qt::Key_F5);
    EXPECT_TRUE(bench.hasRead());
    bench.choose("mnu_clear");
    bench.window->readSoon();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.hasRead(); }));
    EXPECT_FALSE(bench.find<QTimer>("Timer3").isActive()) << "it ticks once";
}

TEST(HauptformRead, ShowsThatItIsBusyAndRefusesASecondReadMeanwhile)
{
    ReadBench bench(sim::Fault::tornBlock);
    const auto& progress = bench.find<QProgressBar>("Progress");
    std::set<QString> signs;
    QObject::connect(&bench.view, &MainWindowView::progressShown, [&](std::size_t, std::size_t total) {
        signs.insert(bench.find<QLabel>("LineSign").text());
        EXPECT_TRUE(total == 0 || bench.window->cursor().shape() == Qt::WaitCursor);
    });
    const When underWay([&] { return progress.isVisible() && signs.size() > 1; },
                        [&] {
                            EXPECT_TRUE(progress.format().endsWith(QStringLiteral(" von 1025")))
                                << progress.format().toStdString();
                            EXPECT_EQ(bench.text("Status"), "Alle CVs einlesen");
                            for (const auto& name :
                                 wordsOf("read_all clear com kv07 english index suchen_generell standart"))
                                EXPECT_FALSE(bench.item("mnu_" + name).isEnabled()) << name;
                            EXPECT_FALSE(bench.isEnabled("Start") || bench.isEnabled("COM"));
                            EXPECT_TRUE(bench.item("mnu_exit").isEnabled());
                            bench.press(Qt::Key_F5);
                        });
    bench.click("Start");
    EXPECT_FALSE(progress.isVisible());
    EXPECT_EQ(bench.window->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(bench.text("LineSign"), "");
    EXPECT_TRUE(bench.isEnabled("Start") && bench.item("mnu_english").isEnabled());
    EXPECT_TRUE(bench.hasRead());
}

TEST(HauptformRead, StopsByButtonAndByEscapeAndUnwindsBeforeItCloses)
{
    for (const auto fault : {sim::Fault::silence, sim::Fault::none}) { // and within the block
        ReadBench bench(fault, sim::Pace::line);
        bench.showOfflineList();
        bench.chooseCv(29);
        bench.readUntil([&] {
            EXPECT_TRUE(bench.find<QWidget>("Anhalten").isVisible());
            fault == sim::Fault::none ? bench.press(Qt::Key_Escape) : bench.click("Anhalten");
        });
        EXPECT_FALSE(bench.port.isOpen());
        EXPECT_EQ(bench.line(), "CV29 = 6");
        EXPECT_FALSE(bench.find<QWidget>("Anhalten").isVisible());
        EXPECT_EQ(bench.text("Status"), utf8FromText(bench.state.texts.caption(Caption::readStopped)));
    }
    ReadBench bench(sim::Fault::silence);
    bench.state.recovery.file = "recovery.kvr";
    bench.showOfflineList();
    bench.change(2, 77);
    bench.expectBox(Message::unsavedChangesQuestion, "Verwerfen");
    bench.readUntil([&] {
        bench.window->close();
        EXPECT_TRUE(bench.window->isVisible());
    });
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(bench.files.content.count("recovery.kvr"), 1U) << "the read has not replaced it";
}

TEST(HauptformRead, OffersNoWriteToAReceiverThatCanBeReadOnly)
{
    WindowBench bench({.decoder = "receiver-readonly"});
    bench.files.content[bench.state.programFolder / "CV_Standart_receiver.txt"] =
        bytesOf("Standard KV05-XT\r\n1;3;name;0;255;3;;;;;;;;;;;\r\nEnde CV\r\n\r\n");
    const auto reason = utf8FromText(bench.state.texts.caption(Caption::receiverOnlyRead));
    std::string shown;
    const auto show = [&] {
        for (const char* name : {"Einzelne_speichern", "Alle_speichern"})
            shown +=
                (bench.isEnabled(name) ? "on|" : "off|") + bench.find<QWidget>(name).toolTip().toStdString();
    };
    bench.click("Start");
    EXPECT_EQ(bench.text("Status"), reason);
    bench.choose("mnu_kv07");
    bench.chooseCv(2);
    show(); // until the next read
    bench.port.simulator() = sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none);
    bench.click("Start");
    show();
    EXPECT_EQ(shown, "off|" + reason + "off|" + reason + "on|on|");
}

struct WriteWindowBench : WindowBench {
    WriteWindowBench() { click("Start"); }
    bool isMarked(int cv) { return lineOf(cv).find("geändert") != std::string::npos; }
    // The changed ones; `act` comes from the event loop once CV48 is about to be written.
    void write(const std::function<void()>& act = {})
    {
        const auto whenShown = [this, act](int cv) {
            if (cv == 48 && act)
                QTimer::singleShot(0, window.get(), act);
        };
        const auto connection = QObject::connect(&view, &MainWindowView::writeProgressShown, whenShown);
        click("Alle_speichern");
        QObject::disconnect(connection);
    }
    // The preview comes next; `act` may change its ticks before the write goes on.
    void expectPreview(const std::function<void(QWidget&)>& act = [](QWidget&) {})
    {
        expect("preview", [act](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("Schreibvorschau"));
            act(dialog);
            test::click(dialog, "OKButton");
        });
    }
    // The report comes next, with this first row of so many, and what it tells in its summary.
    void expectReport(const char* first, int count, const char* told = "")
    {
        expect("report", [=](QWidget& dialog) {
            const auto& table = test::find<QTableWidget>(dialog, "Ergebnisse");
            QStringList row;
            for (int column = 0; column < table.columnCount(); ++column)
                row.append(table.item(0, column)->text());
            EXPECT_EQ(row.join(u'|').toStdString(), first);
            EXPECT_EQ(table.rowCount(), count);
            EXPECT_NE(labelOf(dialog, "Zusammenfassung").find(told), std::string::npos);
            test::click(dialog, "Kopieren");
            auto* const rest = dialog.findChild<QAbstractButton*>(QStringLiteral("Rest_schreiben"));
            rest != nullptr ? rest->click() : test::click(dialog, "Schliessen");
        });
    }
};

TEST(HauptformWrite, WritesTheCurrentCvAsItIsTypedAndConfirmsItWhereThatIsWanted)
{
    WriteWindowBench bench;
    const int before = bench.held(48);
    bench.change(48, 99);
    bench.click("Einzelne_speichern");
    EXPECT_EQ(bench.held(48), 99);
    EXPECT_FALSE(bench.isMarked(48));
    ASSERT_EQ(bench.kept.size(), 1U) << "what the vehicle held is kept first";
    EXPECT_EQ(bench.kept.front().table.value(48), before);
    bench.type("CV_Wert", "17"); // and not taken
    bench.choose("mnu_write_single");
    EXPECT_EQ(bench.held(48), 17);
    bench.click("Hinweis_nach_Schreiben");
    EXPECT_EQ(bench.settings.get("Window", "NoticeAfterWrite"), u"1");
    bench.expectBoxWith("CV 48  ");
    bench.click("Einzelne_speichern");
    bench.chooseCv(2);
    const int second = bench.held(2);
    bench.type("CV_Wert", "201");
    bench.expect("limits");
    bench.click("Einzelne_speichern");
    EXPECT_EQ(bench.held(2), second) << "a refused value is not written, nor the old one";
    bench.key("CV_Wert", Qt::Key_Escape);
    bench.change(168, 33);
    bench.expectReport("CV167|deutsch 167|1|1|geschrieben", 5);
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.find<QTimer>("Timer4").isActive());
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); }));
    EXPECT_FALSE(bench.find<QTimer>("Timer4").isActive());
    EXPECT_EQ(bench.held(168), 33);
}

TEST(HauptformWrite, ThePreviewDecidesWhatIsWritten)
{
    WriteWindowBench bench;
    const auto address = bench.held(1);
    const auto kept = bench.held(48);
    for (const int cv : {1, 48, 52, 168})
        bench.change(cv, 21);
    bench.expect("cancelled");
    bench.write();
    EXPECT_TRUE(bench.kept.empty());
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
    const char* const unticked = "CV48|deutsch 48|20|21|ausgelassen, auf Ihren Wunsch";
    bench.expectReport(unticked, 8, "kept.kvr");
    bench.write();
    EXPECT_EQ(bench.held(52), 21);
    const auto copied = QGuiApplication::clipboard()->text().toStdString();
    EXPECT_NE(copied.find("\t21\tgeschrieben"), std::string::npos) << copied;
    bench.expectReport(unticked, 7); // without a preview, and what was left out stays out
    bench.write();
    EXPECT_TRUE(bench.held(48) == kept && bench.held(1) == address);
}

TEST(HauptformWrite, StopsBetweenTwoCvsLeavesTheRestMarkedAndGoesOnWithIt)
{
    WriteWindowBench bench;
    for (const int cv : {48, 52, 53})
        bench.change(cv, 21);
    bench.expectPreview();
    bench.expectReport("CV48|deutsch 48|20|21|geschrieben", 3, "Sie haben angehalten.");
    bench.expectPreview([&](QWidget&) { EXPECT_TRUE(!bench.isMarked(48) && bench.isMarked(52)); });
    bench.expectReport("CV52|deutsch 52|110|21|geschrieben", 2);
    bench.write([&] {
        EXPECT_EQ(bench.find<QProgressBar>("Progress").format().toStdString(), "CV48, noch 2");
        EXPECT_FALSE(bench.isEnabled("Alle_speichern") || bench.isEnabled("Zuruecknehmen"));
        bench.press(Qt::Key_Escape);
        EXPECT_FALSE(bench.isEnabled("Anhalten"));
    });
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_EQ(bench.held(53), 21);
    EXPECT_FALSE(bench.find<QWidget>("Anhalten").isVisible() || bench.find<QWidget>("Progress").isVisible());
    bench.expect("nothing is left", [](QWidget& dialog) {
        EXPECT_FALSE(find(dialog, "OKButton").isEnabled());
        EXPECT_NE(labelOf(dialog, "Anzahl").find("Nichts"), std::string::npos);
        click(dialog, "CancelButton");
    });
    bench.write();
}

TEST(HauptformWrite, ClosesAfterTheCvThatIsBeingWritten)
{
    WriteWindowBench bench;
    bench.change(48, 31);
    bench.change(52, 31);
    bench.expectPreview();
    bench.expectBox(Message::unsavedChangesQuestion, "Verwerfen");
    bench.write([&] {
        bench.window->close();
        EXPECT_TRUE(bench.window->isVisible());
    });
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(bench.held(48), 31) << "what had been begun came to its end";
    EXPECT_NE(bench.held(52), 31);
}

TEST(HauptformWrite, WritesOfASheetWhatItChangedAndNothingElse)
{
    WindowBench bench;
    bench.click("Start");
    auto memory = bench.port.simulator().decoder().memory;
    memory[1] = 30;
    bench.expect("sheet", [](QWidget& sheet) {
        find<QSpinBox>(sheet, "CV2").setValue(30);
        click(sheet, "Schreiben");
    });
    bench.expectBoxWith("Fertig: Die Werte von \"Blatt bus\"");
    bench.choose("mnu_bus");
    EXPECT_TRUE(bench.port.simulator().decoder().memory == memory);
    EXPECT_EQ(bench.lineOf(2), "CV2  = 30");
    EXPECT_EQ(bench.kept.size(), 1U) << "the backup";
}

} // namespace karvo::test
