// Reading a decoder: what the window shows and allows meanwhile, and how it comes out of it.
#include "shell/window_bench.h"
#include "support/when.h"

#include <QProgressBar>

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
        QTimer::singleShot(100, window.get(), [&] {
            since.start();
            act();
        });
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
    bench.readUntil([&] {
        bench.window->close();
        EXPECT_TRUE(bench.window->isVisible());
    });
    EXPECT_FALSE(bench.window->isVisible());
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

} // namespace karvo::test
