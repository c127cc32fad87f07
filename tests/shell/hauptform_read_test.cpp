// Reading a decoder: what the window shows and allows meanwhile, and how it comes out of it.
#include "shell/window_bench.h"

#include <QProgressBar>
#include <QPushButton>

namespace karvo::test
{

namespace
{

const QString ok = QStringLiteral("OK");
constexpr int linesAfterRead = 177; // CV1 to CV176, and the battery's voltage

BenchSetup with(sim::Fault fault, sim::Pace pace = sim::Pace::none)
{
    BenchSetup setup;
    setup.fault = fault;
    setup.pace = pace;
    return setup;
}

// Carried out once the operation that the caller starts next waits for the line.
void whileWaiting(std::function<void()> act)
{
    QTimer::singleShot(100, std::move(act));
}

} // namespace

TEST(HauptformRead, FillsTheList)
{
    WindowBench bench;
    bench.find<QPushButton>("Start").click();
    EXPECT_EQ(bench.list().count(), linesAfterRead);
    EXPECT_EQ(bench.list().item(0)->text().toStdString(), "CV1  = 3");
    EXPECT_EQ(bench.list().item(176)->text().toStdString(), "Akkuspannung = 3,92 Volt (196)");
    EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Firmware = 6  Sublevel = 2  ATmega328");
    EXPECT_EQ(bench.text("Adresse"), "Adresse: 3 (kurz)");
    EXPECT_EQ(bench.text("DCC1"), "3");
    EXPECT_EQ(bench.text("DCC2"), "4");
    EXPECT_EQ(bench.text("Version"), "V01_23");
    EXPECT_EQ(bench.text("Status"), "176 CVs");
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Firmware = 6  Sublevel = 2 | CV_Standart_kv07.txt[*]");
    EXPECT_EQ(bench.window->cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(bench.port.isOpen());
}

TEST(HauptformRead, StartsFromTheMenuAndFromTheTimer)
{
    WindowBench bench;
    bench.press(Qt::Key_F5);
    EXPECT_EQ(bench.list().count(), linesAfterRead);
    bench.item("mnu_clear").trigger();
    bench.window->readSoon();
    EXPECT_EQ(bench.list().count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.list().count() == linesAfterRead; }));
    EXPECT_FALSE(bench.find<QTimer>("Timer3").isActive()) << "it ticks once";
}

TEST(HauptformRead, ShowsThatItIsBusyAndHowFarItIs)
{
    WindowBench bench(with(sim::Fault::tornBlock));
    std::vector<std::string> formats;
    std::vector<QString> signs;
    bool controlsOff = false;
    bool hourglass = false;
    QTimer sampler;
    QObject::connect(&sampler, &QTimer::timeout, [&] {
        const auto& progress = bench.find<QProgressBar>("Progress");
        if (progress.isVisible() && (formats.empty() || formats.back() != progress.format().toStdString()))
            formats.push_back(progress.format().toStdString());
        const auto sign = bench.find<QLabel>("LineSign").text();
        if (signs.empty() || signs.back() != sign)
            signs.push_back(sign);
        hourglass = hourglass || bench.window->cursor().shape() == Qt::WaitCursor;
    });
    sampler.start(20);
    whileWaiting([&] {
        EXPECT_EQ(bench.text("Status"), "Alle CVs einlesen");
        controlsOff = true;
        for (const char* name :
             {"mnu_read_all", "mnu_clear", "mnu_com", "mnu_kv07", "mnu_KV04_FW_08", "mnu_german",
              "mnu_english", "mnu_index", "mnu_suchen_generell", "mnu_standart"})
            EXPECT_FALSE(bench.item(name).isEnabled()) << name;
        EXPECT_FALSE(bench.find<QPushButton>("Start").isEnabled());
        EXPECT_FALSE(bench.find<QComboBox>("COM").isEnabled());
        EXPECT_TRUE(bench.item("mnu_exit").isEnabled());
    });
    bench.find<QPushButton>("Start").click();
    sampler.stop();
    EXPECT_TRUE(controlsOff);
    EXPECT_TRUE(hourglass);
    ASSERT_FALSE(formats.empty());
    EXPECT_NE(formats.back().find(" von 1025"), std::string::npos) << formats.back();
    EXPECT_GE(signs.size(), 2U) << "the sign never changed its shape";
    EXPECT_FALSE(bench.find<QProgressBar>("Progress").isVisible());
    EXPECT_EQ(bench.text("LineSign"), "");
    EXPECT_TRUE(bench.find<QPushButton>("Start").isEnabled());
    EXPECT_TRUE(bench.item("mnu_english").isEnabled());
    EXPECT_EQ(bench.list().count(), linesAfterRead);
}

TEST(HauptformRead, RefusesASecondReadMeanwhile)
{
    WindowBench bench(with(sim::Fault::tornBlock));
    int fillings = 0;
    QObject::connect(&bench.view, &MainWindowView::listReplaced, [&] { ++fillings; });
    bool asked = false;
    whileWaiting([&] {
        asked = true;
        bench.find<QPushButton>("Start").click();
        bench.press(Qt::Key_F5);
        EXPECT_EQ(readIntoList(bench.bench, ReadStarter::other), std::nullopt);
    });
    bench.find<QPushButton>("Start").click();
    EXPECT_TRUE(asked);
    EXPECT_EQ(fillings, 1);
    EXPECT_EQ(bench.list().count(), linesAfterRead);
}

// On a line that says nothing, and within the block.
TEST(HauptformRead, StopsByButtonAndByEscape)
{
    for (const auto fault : {sim::Fault::silence, sim::Fault::none}) {
        WindowBench bench(with(fault, sim::Pace::line));
        bench.showOfflineList();
        bench.chooseCv(29);
        bool stopped = false;
        whileWaiting([&] {
            stopped = bench.find<QPushButton>("Anhalten").isVisible();
            if (fault == sim::Fault::none)
                bench.press(Qt::Key_Escape);
            else
                bench.find<QPushButton>("Anhalten").click();
        });
        QElapsedTimer clock;
        clock.start();
        bench.find<QPushButton>("Start").click();
        EXPECT_TRUE(stopped);
        EXPECT_LT(clock.elapsed(), 1500) << "it waited for the reply";
        EXPECT_FALSE(bench.port.isOpen());
        EXPECT_EQ(bench.list().count(), 176);
        EXPECT_EQ(bench.field("CV_Nummer"), "29");
        EXPECT_FALSE(bench.find<QPushButton>("Anhalten").isVisible());
        EXPECT_EQ(bench.text("Status"), utf8FromText(bench.state.texts.caption(Caption::readStopped)));
    }
}

TEST(HauptformRead, OffersNoWriteToAReceiverThatCanBeReadOnly)
{
    BenchSetup setup;
    setup.decoder = "receiver-readonly";
    WindowBench bench(setup);
    bench.files.content[bench.state.programFolder / "CV_Standart_receiver.txt"] =
        bytesOf("Standard KV05-XT\r\n1;3;name;0;255;3;;;;;;;;;;;\r\nEnde CV\r\n\r\n");
    const auto reason = utf8FromText(bench.state.texts.caption(Caption::receiverOnlyRead));
    const auto expectOff = [&](bool off) {
        for (const char* name : {"Einzelne_speichern", "Alle_speichern"}) {
            const auto& button = bench.find<QPushButton>(name);
            EXPECT_EQ(button.isEnabled(), !off) << name;
            EXPECT_EQ(button.toolTip().toStdString(), off ? reason : "") << name;
        }
    };
    bench.find<QPushButton>("Start").click();
    EXPECT_EQ(bench.list().count(), 1);
    EXPECT_EQ(bench.text("Status"), reason);
    expectOff(true);
    bench.item("mnu_kv07").trigger();
    bench.chooseCv(2);
    expectOff(true); // until the next read
    bench.port.simulator() = sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none);
    bench.find<QPushButton>("Start").click();
    EXPECT_EQ(bench.list().count(), linesAfterRead);
    expectOff(false);
}

TEST(HauptformRead, ClosesOnlyOnceTheReadHasUnwound)
{
    WindowBench bench(with(sim::Fault::silence));
    bool stayedOpen = false;
    whileWaiting([&] {
        bench.window->close();
        stayedOpen = bench.window->isVisible();
    });
    QElapsedTimer clock;
    clock.start();
    bench.find<QPushButton>("Start").click();
    EXPECT_TRUE(stayedOpen);
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_FALSE(bench.state.lineBusy);
    EXPECT_LT(clock.elapsed(), 2000) << "it waited for the time-out";
    EXPECT_EQ(bench.settings.values.count("Window/Geometry"), 1U);
}

TEST(HauptformRead, ReportsAPortThatDoesNotOpenAndEnds)
{
    WindowBench bench;
    bench.find<QComboBox>("COM").setCurrentIndex(8);
    bench.driver.expect(QStringLiteral("refused"), [](QWidget& window) {
        EXPECT_FALSE(dynamic_cast<QMessageBox&>(window).text().isEmpty());
        window.close();
    });
    bench.find<QPushButton>("Start").click();
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
        WindowBench bench(with(fault, fault == sim::Fault::hangUp ? sim::Pace::line : sim::Pace::none));
        bench.showOfflineList();
        const QString begin = bench.message(message) + QLatin1String(more);
        bench.driver.expect(begin, [&](QWidget& box) {
            EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).text().startsWith(begin)) << begin.toStdString();
            box.close();
        });
        bench.find<QPushButton>("Start").click();
        EXPECT_TRUE(bench.driver.isDone());
        EXPECT_EQ(bench.list().count(), 176);
        EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Liste ohne Fahrzeug");
        EXPECT_TRUE(bench.find<QPushButton>("Start").isEnabled());
        EXPECT_EQ(bench.window->focusWidget(), &bench.find<QPushButton>("Start"));
        EXPECT_EQ(bench.window->cursor().shape(), Qt::ArrowCursor);

        bench.port.simulator().setFault(sim::Fault::none);
        bench.find<QPushButton>("Start").click();
        EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Firmware = 6  Sublevel = 2  ATmega328")
            << "the next read works";
    }
}

} // namespace karvo::test
