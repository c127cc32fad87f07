// The windows of the firmware renewal, on a simulated KV07.
#include "firmware/forms/firmware_ablauf.h"
#include "firmware/forms/upgrade.h"
#include "shell/window_bench.h"
#include "support/hex_file.h"
#include "support/link_bench.h"
#include "support/when.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>

namespace karvo::test
{
namespace
{

// Without the driver of the modal windows: this one opens and closes by itself.
TEST(FirmwareAblaufWindow, ShowsTheFourLinesAndThePercentAndCloses)
{
    MemoryFiles files;
    MemorySettings settings;
    Journal journal;
    QtWait wait;
    SimulatedPort port(sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::none, sim::Fault::none), 1);
    port.setNotice([&wait] { wait.wake(); });
    ScriptedPrompts prompts(journal);
    RecordingView view(journal);
    ProgramState state;
    Workbench bench{state, port, wait, prompts, view, files, settings};
    for (const int number : {308, 309, 310, 311})
        setText(state.texts, number, u"line " + textFromNumber(number));
    setText(state.texts, 426, u"UPDATE");
    state.link.interfaceAnswered = true;
    setCaption(state.texts, 664, u"header {1}");
    files.content["a.uhx"] = bytesOf("1F80,V6\r\nUpdate Ende\r\n:10000102\r\n");
    Firmware_Ablauf window(state);
    const FixedClock clock;
    const auto end = updateThroughInterface(
        bench, {[] { return std::filesystem::path("a.uhx"); },
                [&](const std::filesystem::path&) { EXPECT_FALSE(window.isVisible()); }, clock, window});
    EXPECT_EQ(end, UpdateEnd::sent);
    EXPECT_EQ(port.simulator().update().image().size(), 16U);
    EXPECT_EQ(window.findChild<QPlainTextEdit*>(QStringLiteral("Text"))->toPlainText().toStdString(),
              "line 308\nline 309\nline 310\nline 311");
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("Header"))->text().toStdString(), "header 1F80, V6");
    EXPECT_EQ(window.findChild<QProgressBar*>(QStringLiteral("Progress"))->text(), QStringLiteral("100%"));
    EXPECT_FALSE(window.isVisible());
}

// The boot loader's answer to the erase is shorter than its wait: for that long the upload stands still.
constexpr std::chrono::milliseconds eraseWait{300};

struct UpgradeBench : WindowBench {
    Upgrade upgrade{bench, std::get<HexImage>(parseHexImage(bytesOf(hexFile(9)))), window.get()};
    QPlainTextEdit& log = *upgrade.findChild<QPlainTextEdit*>(QStringLiteral("Log"));
    QPushButton& copy = *upgrade.findChild<QPushButton*>(QStringLiteral("CopyLog"));

    UpgradeBench() { state.link.timeOutInterval = eraseWait; }

    std::string said() { return upgrade.findChild<QLabel*>(QStringLiteral("Phase"))->text().toStdString(); }
    std::size_t flashed() { return port.simulator().bootLoader().flash().size(); }

    // The whole upload, with something done while the erase is awaited.
    void run(const std::function<void()>& duringErase)
    {
        const When erasing([this] { return port.simulator().bootLoader().erased(); }, duringErase);
        upgrade.show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return erasing.hasActed() && !state.lineBusy; }, 5000));
    }
};

TEST(UpgradeWindow, ItsLogGrowsWhileItRunsAndCanBeCopied)
{
    UpgradeBench bench;
    EXPECT_FALSE(bench.copy.isEnabled());
    bench.run([&] {
        EXPECT_TRUE(bench.state.lineBusy);
        // 19 messages with their replies; the erase has none yet.
        EXPECT_EQ(bench.log.blockCount(), 38);
        ASSERT_TRUE(bench.copy.isEnabled());
        bench.copy.click();
    });
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(QStringLiteral("Der Speicher wird gelöscht\n> 1B 01 00 01 0E 01 14\n< 1B")))
        << copied.toStdString();
    EXPECT_EQ(bench.log.blockCount(), 46);
    EXPECT_EQ(bench.flashed(), 256U);
    EXPECT_EQ(bench.said(), "Der Decoder hat alle 2 Seiten angenommen.");
    EXPECT_EQ(bench.upgrade.findChild<QProgressBar*>(QStringLiteral("Progress"))->value(), 100);
    EXPECT_TRUE(bench.upgrade.isVisible());
}

TEST(UpgradeWindow, ClosingItAsksAndGoesOnAfterANo)
{
    UpgradeBench bench;
    bench.driver.expectBox(bench.message(Message::stopTransferQuestion), QStringLiteral("Nein"));
    bench.run([&] { bench.upgrade.close(); });
    EXPECT_EQ(bench.flashed(), 256U);
    EXPECT_TRUE(bench.upgrade.isVisible());
    bench.upgrade.close(); // nothing to ask any more
    EXPECT_FALSE(bench.upgrade.isVisible());
}

TEST(UpgradeWindow, ClosingItStopsBeforeTheNextMessageAfterAYesAndKeepsTheLog)
{
    UpgradeBench bench;
    bench.driver.expectBox(bench.message(Message::stopTransferQuestion), QStringLiteral("Ja"));
    bench.run([&] { bench.upgrade.close(); });
    EXPECT_EQ(bench.flashed(), 0U);
    EXPECT_TRUE(bench.said().starts_with("Die Übertragung ist nicht bis zum Ende gelaufen.")) << bench.said();
    EXPECT_EQ(bench.log.blockCount(), 40);
    EXPECT_TRUE(bench.upgrade.isVisible());
    bench.upgrade.close();
    EXPECT_FALSE(bench.upgrade.isVisible());
}

TEST(UpgradeWindow, ThreeMessagesWithoutAReplyOfferToStop)
{
    UpgradeBench bench;
    bench.port.simulator().setFault(sim::Fault::silence);
    bench.state.link.timeOutInterval = std::chrono::milliseconds(20);
    bench.driver.expect(QStringLiteral("no loader"), [&](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.text().toStdString(), bench.message(Message::noLoaderQuestion).toStdString());
        EXPECT_EQ(bench.upgrade.findChild<QLabel*>(QStringLiteral("Notice"))->text().toStdString(),
                  "Kein Bootloader antwortet");
        EXPECT_TRUE(bench.state.lineBusy);
        box.button(QMessageBox::Yes)->click();
    });
    bench.upgrade.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone() && !bench.state.lineBusy; }, 5000));
    EXPECT_TRUE(bench.said().find("Kein Bootloader hat geantwortet.") != std::string::npos) << bench.said();
    EXPECT_TRUE(bench.upgrade.isVisible());
    bench.upgrade.close();
}

TEST(UpgradeWindow, GoesOnWhileItsQuestionStandsAndTakesItAwayAtTheEnd)
{
    UpgradeBench bench;
    bench.driver.leaveAlone("StopQuestion");
    QPointer<QWidget> question;
    bench.run([&] {
        bench.upgrade.close();
        question = QApplication::activeModalWidget();
    });
    EXPECT_EQ(bench.flashed(), 256U);
    EXPECT_TRUE(question.isNull());
    EXPECT_TRUE(bench.upgrade.isVisible());
}

} // namespace
} // namespace karvo::test
