// Reading a decoder: what the window shows and allows meanwhile, and how it comes out of it.
#include "shell/window_bench.h"

#include <QProgressBar>

namespace karvo::test
{

struct ReadBench : WindowBench {
    explicit ReadBench(sim::Fault fault = sim::Fault::none, sim::Pace pace = sim::Pace::none)
        : WindowBench({.pace = pace, .fault = fault})
    {
    }
    // Reads, and acts once the read waits for the line; how long that took.
    qint64 read(std::function<void()> act)
    {
        bool acted = false;
        QTimer::singleShot(100, [&acted, act = std::move(act)] {
            acted = true;
            act();
        });
        QElapsedTimer since;
        since.start();
        click("Start");
        EXPECT_TRUE(acted) << "it was over too soon";
        EXPECT_FALSE(state.lineBusy);
        return since.elapsed();
    }
    // CV1 to CV176, and the battery's voltage.
    bool hasRead() { return list().count() == 177; }
    std::string shape() { return window->cursor().shape() == Qt::WaitCursor ? "hourglass" : "arrow"; }
};

TEST(HauptformRead, FillsTheListFromButtonKeyAndTimer)
{
    ReadBench bench;
    bench.click("Start");
    EXPECT_TRUE(bench.hasRead());
    EXPECT_EQ(bench.lineOf(1), "CV1  = 3");
    EXPECT_EQ(bench.list().item(176)->text().toStdString(), "Akkuspannung = 3,92 Volt (196)");
    const std::pair<const char*, const char*> texts[] = {
        {"Programm_Kennung", "KV07  Firmware = 6  Sublevel = 2  ATmega328"},
        {"Adresse", "Adresse: 3 (kurz)"},
        {"DCC1", "3"},
        {"DCC2", "4"},
        {"Version", "V01_23"},
        {"Status", "176 CVs"}};
    for (const auto& [label, text] : texts)
        EXPECT_EQ(bench.text(label), text);
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Firmware = 6  Sublevel = 2 | CV_Standart_kv07.txt[*]");
    EXPECT_EQ(bench.shape(), "arrow");
    EXPECT_TRUE(bench.port.isOpen());
    bench.choose("mnu_clear");
    bench.press(Qt::Key_F5);
    EXPECT_TRUE(bench.hasRead());
    bench.choose("mnu_clear");
    bench.window->readSoon();
    EXPECT_EQ(bench.list().count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.hasRead(); }));
    EXPECT_FALSE(bench.find<QTimer>("Timer3").isActive()) << "it ticks once";
}

TEST(HauptformRead, ShowsThatItIsBusyAndHowFarItIsAndRefusesASecondReadMeanwhile)
{
    ReadBench bench(sim::Fault::tornBlock);
    std::string format;
    std::set<QString> signs;
    bool hourglass = false;
    int fillings = 0;
    QObject::connect(&bench.view, &MainWindowView::listReplaced, [&] { ++fillings; });
    QTimer sampler;
    QObject::connect(&sampler, &QTimer::timeout, [&] {
        const auto& progress = bench.find<QProgressBar>("Progress");
        format = progress.isVisible() ? progress.format().toStdString() : format;
        signs.insert(bench.find<QLabel>("LineSign").text());
        hourglass = hourglass || bench.shape() == "hourglass";
    });
    sampler.start(20);
    bench.read([&] {
        EXPECT_EQ(bench.text("Status"), "Alle CVs einlesen");
        for (const auto& name :
             wordsOf("read_all clear com kv07 KV04_FW_08 german english index suchen_generell "
                     "standart"))
            EXPECT_FALSE(bench.item("mnu_" + name).isEnabled()) << name;
        EXPECT_FALSE(bench.isEnabled("Start") || bench.isEnabled("COM"));
        EXPECT_TRUE(bench.item("mnu_exit").isEnabled());
        bench.click("Start");
        bench.press(Qt::Key_F5);
        EXPECT_EQ(readIntoList(bench.bench, ReadStarter::other), std::nullopt);
    });
    sampler.stop();
    EXPECT_TRUE(hourglass);
    EXPECT_NE(format.find(" von 1025"), std::string::npos) << format;
    EXPECT_GE(signs.size(), 2U) << "the sign never changed its shape";
    EXPECT_EQ(fillings, 1);
    EXPECT_FALSE(bench.find<QProgressBar>("Progress").isVisible());
    EXPECT_EQ(bench.text("LineSign"), "");
    EXPECT_TRUE(bench.isEnabled("Start") && bench.item("mnu_english").isEnabled());
    EXPECT_TRUE(bench.hasRead());
}

// On a line that says nothing, and within the block.
TEST(HauptformRead, StopsByButtonAndByEscape)
{
    for (const auto fault : {sim::Fault::silence, sim::Fault::none}) {
        ReadBench bench(fault, sim::Pace::line);
        bench.showOfflineList();
        bench.chooseCv(29);
        const auto& stop = bench.find<QAbstractButton>("Anhalten");
        const auto lasted = bench.read([&] {
            EXPECT_TRUE(stop.isVisible());
            if (fault == sim::Fault::none)
                bench.press(Qt::Key_Escape);
            else
                bench.click("Anhalten");
        });
        EXPECT_LT(lasted, 1500) << "it waited for the reply";
        EXPECT_FALSE(bench.port.isOpen());
        EXPECT_EQ(bench.list().count(), 176);
        EXPECT_EQ(bench.field("CV_Nummer"), "29");
        EXPECT_FALSE(stop.isVisible());
        EXPECT_EQ(bench.text("Status"), utf8FromText(bench.state.texts.caption(Caption::readStopped)));
    }
}

TEST(HauptformRead, OffersNoWriteToAReceiverThatCanBeReadOnly)
{
    WindowBench bench({.decoder = "receiver-readonly"});
    bench.files.content[bench.state.programFolder / "CV_Standart_receiver.txt"] =
        bytesOf("Standard KV05-XT\r\n1;3;name;0;255;3;;;;;;;;;;;\r\nEnde CV\r\n\r\n");
    const auto reason = utf8FromText(bench.state.texts.caption(Caption::receiverOnlyRead));
    const auto expectOff = [&](bool off) {
        for (const char* name : {"Einzelne_speichern", "Alle_speichern"}) {
            EXPECT_EQ(bench.isEnabled(name), !off) << name;
            EXPECT_EQ(bench.find<QWidget>(name).toolTip().toStdString(), off ? reason : "") << name;
        }
    };
    bench.click("Start");
    EXPECT_EQ(bench.list().count(), 1);
    EXPECT_EQ(bench.text("Status"), reason);
    expectOff(true);
    bench.choose("mnu_kv07");
    bench.chooseCv(2);
    expectOff(true); // until the next read
    bench.port.simulator() = sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none);
    bench.click("Start");
    expectOff(false);
}

TEST(HauptformRead, ClosesOnlyOnceTheReadHasUnwound)
{
    ReadBench bench(sim::Fault::silence);
    const auto lasted = bench.read([&] {
        bench.window->close();
        EXPECT_TRUE(bench.window->isVisible());
    });
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_LT(lasted, 2000) << "it waited for the time-out";
    EXPECT_EQ(bench.settings.values.count("Window/Geometry"), 1U);
}

TEST(HauptformRead, ReportsAPortThatDoesNotOpenAndEnds)
{
    WindowBench bench;
    bench.find<QComboBox>("COM").setCurrentIndex(8);
    bench.expectBoxWith("COM9");
    bench.click("Start");
    EXPECT_TRUE(bench.prompts.hasEnded());
    EXPECT_FALSE(bench.state.lineBusy);
}

TEST(HauptformRead, ReportsFaultsAndKeepsTheList)
{
    const struct {
        sim::Fault fault;
        Message message;
        const char* more; // what stands behind it begins so
    } cases[] = {
        {sim::Fault::unknownIdentification, Message::unknownDecoder, "\r\nAntwort: \"99\""},
        {sim::Fault::wrongCheckByte, Message::wrongCheckByte, ""},
        {sim::Fault::hangUp, Message::noReply, "\r\nEmpfangen: 5"},
    };
    for (const auto& [fault, message, more] : cases) {
        ReadBench bench(fault, fault == sim::Fault::hangUp ? sim::Pace::line : sim::Pace::none);
        bench.state.link.timeOutInterval = std::chrono::milliseconds(500);
        bench.showOfflineList();
        bench.expectBoxWith(bench.message(message).toStdString() + more);
        bench.click("Start");
        EXPECT_TRUE(bench.driver.isDone());
        EXPECT_EQ(bench.list().count(), 176);
        EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Liste ohne Fahrzeug");
        EXPECT_EQ(bench.window->focusWidget(), &bench.find<QWidget>("Start"));
        EXPECT_EQ(bench.shape(), "arrow");
        bench.port.simulator().setFault(sim::Fault::none);
        bench.click("Start");
        EXPECT_TRUE(bench.hasRead()) << "the next read works";
    }
}

} // namespace karvo::test
