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

namespace karvo::test
{

// The workbench's own boxes are scripted: this window opens and closes by itself.
TEST(FirmwareAblaufWindow, ShowsTheFourLinesAndThePercentAndCloses)
{
    WindowBench bench;
    Journal journal;
    ScriptedPrompts prompts(journal);
    Workbench scripted{bench.state, bench.port, bench.wait, prompts, bench.view, bench.files, bench.settings};
    numberEveryText(bench.state.texts);
    setText(bench.state.texts, 426, u"UPDATE");
    setCaption(bench.state.texts, 664, u"header {1}");
    bench.state.link.interfaceAnswered = true;
    bench.files.content["a.uhx"] = bytesOf("1F80,V6\r\nUpdate Ende\r\n:10000102\r\n");
    Firmware_Ablauf window(scripted);
    bench.driver.leaveAlone("Firmware_Ablauf");
    const auto end = updateThroughInterface(
        scripted,
        {[] { return std::filesystem::path("a.uhx"); },
         [&](const std::filesystem::path&) { EXPECT_FALSE(window.isVisible()); }, bench.clock, window});
    EXPECT_EQ(end, UpdateEnd::sent);
    EXPECT_EQ(bench.port.simulator().update().image().size(), 16U);
    EXPECT_EQ(find<QPlainTextEdit>(window, "Text").toPlainText().toStdString(), "m308\nm309\nm310\nm311");
    EXPECT_EQ(labelOf(window, "Header"), "header 1F80, V6");
    EXPECT_EQ(find<QProgressBar>(window, "Progress").text(), QStringLiteral("100%"));
    EXPECT_FALSE(window.isVisible());
}

struct UpgradeBench : WindowBench {
    Upgrade upgrade{bench, std::get<HexImage>(parseHexImage(bytesOf(hexFile(9)))), window.get()};
    QPlainTextEdit& log = test::find<QPlainTextEdit>(upgrade, "Log");

    // The boot loader's answer to the erase is shorter than its wait: for that long the upload stands still.
    UpgradeBench() { state.link.timeOutInterval = std::chrono::milliseconds(300); }

    std::string said() { return labelOf(upgrade, "Phase"); }
    std::size_t flashed() { return port.simulator().bootLoader().flash().size(); }

    // The whole upload, with something done while the erase is awaited.
    void run(const std::function<void()>& duringErase)
    {
        const When erasing([this] { return port.simulator().bootLoader().erased(); }, duringErase);
        upgrade.show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return erasing.hasActed() && !state.lineBusy; }, 5000));
        EXPECT_TRUE(upgrade.isVisible());
    }
    void close()
    {
        upgrade.close();
        EXPECT_FALSE(upgrade.isVisible()) << "nothing to ask any more";
    }
};

TEST(UpgradeWindow, ItsLogGrowsWhileItRunsAndCanBeCopied)
{
    UpgradeBench bench;
    auto& copy = find<QAbstractButton>(bench.upgrade, "CopyLog");
    EXPECT_FALSE(copy.isEnabled());
    bench.run([&] {
        EXPECT_TRUE(bench.state.lineBusy);
        // 19 messages with their replies; the erase has none yet.
        EXPECT_EQ(bench.log.blockCount(), 38);
        ASSERT_TRUE(copy.isEnabled());
        copy.click();
    });
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(QStringLiteral("Der Speicher wird gelöscht\n> 1B 01 00 01 0E 01 14\n< 1B")))
        << copied.toStdString();
    EXPECT_EQ(bench.log.blockCount(), 46);
    EXPECT_EQ(bench.said(), "Der Decoder hat alle 2 Seiten angenommen.");
    EXPECT_EQ(find<QProgressBar>(bench.upgrade, "Progress").value(), 100);
}

TEST(UpgradeWindow, ThreeMessagesWithoutAReplyOfferToStop)
{
    UpgradeBench bench;
    bench.port.simulator().setFault(sim::Fault::silence);
    bench.state.link.timeOutInterval = std::chrono::milliseconds(20);
    bench.expect("no loader", [&](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.text(), bench.message(Message::noLoaderQuestion));
        EXPECT_EQ(labelOf(bench.upgrade, "Notice"), "Kein Bootloader antwortet");
        EXPECT_TRUE(bench.state.lineBusy);
        box.button(QMessageBox::Yes)->click();
    });
    bench.upgrade.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone() && !bench.state.lineBusy; }, 5000));
    EXPECT_NE(bench.said().find("Kein Bootloader hat geantwortet."), std::string::npos) << bench.said();
    EXPECT_TRUE(bench.upgrade.isVisible());
    bench.close();
}

} // namespace karvo::test
