// The windows of downloads, archives and the firmware renewal, alone and out of the main window.
#include "firmware/forms/firmware_ablauf.h"
#include "firmware/forms/upgrade.h"

#include "shell/window_bench.h"
#include "support/hex_file.h"
#include "support/link_bench.h"
#include "support/scratch_folder.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QProgressDialog>

namespace karvo::test
{

struct DownloadWindowBench : FilesBench {
    ScratchFolder scratch;

    DownloadWindowBench()
    {
        state.driveC = scratch.path() / "C";
        std::filesystem::current_path(scratch.path());
        scratch.write("C/TEMP/Zip_Ordner/a.txt", "old");
        scratch.write("Update.zip", "");
        archive.entries = {{{"a.txt", ArchiveEntry::Kind::file, false}, {"new"}}};
    }
    // The file dialog is answered with a name, the confirmation with a button.
    void unpack(const std::string& name, const char* button = nullptr, const std::string& told = {})
    {
        expectDialog("*.zip", name.empty() ? name : (scratch.path() / name).string());
        if (button == nullptr)
            expectBox(Message::noFileChosen);
        else
            expect("Unzip_Dialog", clicking(button));
        if (!told.empty())
            expectBoxWith(told);
        choose("mnu_unzip");
    }
    std::string unpacked() { return scratch.read("C/TEMP/Zip_Ordner/a.txt"); }
};

TEST(UnzipDialog, UnpacksTheChosenArchiveAndNothingWithoutConsent)
{
    DownloadWindowBench bench;
    bench.unpack("");
    bench.unpack("Update.zip", "CancelButton");
    EXPECT_TRUE(bench.archive.read_.empty());
    bench.archive.fault = u"bad sum";
    bench.unpack("Update.zip", "OKButton", "(bad sum)");
    EXPECT_EQ(bench.unpacked(), "old");
    bench.archive.fault.reset();
    bench.unpack("Update.zip", "OKButton", (bench.scratch.path() / "C/TEMP/Zip_Ordner").generic_string());
    EXPECT_EQ(bench.unpacked(), "new");
    EXPECT_FALSE(bench.state.lineBusy);
}

TEST(DownloadWindow, ShowsHowFarItIsStopsWhenCancelledAndOffersToUnpack)
{
    DownloadWindowBench bench;
    bench.downloader.end = DownloadEnd::cancelled;
    bench.downloader.during = [&](WorkObserver& observer) {
        EXPECT_TRUE(bench.state.lineBusy);
        observer.showProgress(300, 1000);
        auto& progress = bench.find<QProgressDialog>("TransferProgress");
        EXPECT_EQ(progress.value(), 300);
        EXPECT_EQ(progress.labelText().toStdString(), "KarvoUpd.zip wird heruntergeladen");
        EXPECT_FALSE(observer.stopRequested());
        progress.cancel();
        EXPECT_TRUE(observer.stopRequested());
    };
    bench.choose("mnu_download");

    bench.downloader.during = {};
    bench.downloader.end = DownloadEnd::complete;
    const auto file = bench.scratch.write("C/temp/KarvoUpd.zip", "");
    bench.expect("done", [&](QWidget& box) {
        QTest::qWait(450); // a progress window that was to come up later does not
        EXPECT_EQ(QApplication::activeModalWidget(), &box);
        for (QAbstractButton* const button : dynamic_cast<QMessageBox&>(box).buttons()) {
            if (button->text() == QStringLiteral("Entpacken"))
                button->click();
        }
    });
    bench.expect("Unzip_Dialog", clicking("OKButton"));
    bench.expect("unpacked");
    bench.choose("mnu_download");
    EXPECT_EQ(bench.archive.read_, file);
}

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
    EXPECT_EQ(updateThroughInterface(scripted, {[] { return std::filesystem::path("a.uhx"); },
                                                [](const std::filesystem::path&) {}, bench.clock, window}),
              UpdateEnd::sent);
    EXPECT_EQ(find<QPlainTextEdit>(window, "Text").toPlainText().toStdString(), "m308\nm309\nm310\nm311");
    EXPECT_EQ(labelOf(window, "Header"), "header 1F80, V6");
    EXPECT_EQ(find<QProgressBar>(window, "Progress").text(), QStringLiteral("100%"));
    EXPECT_FALSE(window.isVisible());
}

struct FirmwareBench : FilesBench {
    FirmwareBench()
    {
        state.link.timeOutInterval = std::chrono::milliseconds(300); // so long the erase is awaited
        state.link.interfaceAnswered = true;
        put("a.hex", hexFile(9));
        std::string update = "1F80\r\nUpdate Ende\r\n";
        for (int i = 0; i < 10; ++i) // 55 ms each
            update += ":1000000102030405060708090A0B0C0D0E0F\r\n";
        put("a.uhx", update);
        driver.leaveAlone("Upgrade");
        driver.leaveAlone("Firmware_Ablauf");
    }
    void expectUpload(const std::string& chosen)
    {
        expectDialog("KV07_29August2022_Alle_Versionen.hex", chosen);
    }
    void expectUpdate() { expectDialog("*.uhx", pathOf("a.uhx")); }
    bool hasBegun() { return port.simulator().bootLoader().erased() || !taken().image().empty(); }
    std::size_t flashed() { return port.simulator().bootLoader().flash().size(); }
    const sim::UpdateMode& taken() { return port.simulator().update(); }
    static void closeTransfer() { QApplication::activeModalWidget()->close(); }
    void closeAndStay()
    {
        for (const auto& name : wordsOf("mnu_read_all mnu_kv07_Firmware mnu_firmware mnu_open"))
            EXPECT_FALSE(item(name).isEnabled()) << name;
        EXPECT_FALSE(isEnabled("Start") || isEnabled("COM"));
        window->close();
        EXPECT_TRUE(window->isVisible());
    }
};

struct UpgradeBench : FirmwareBench {
    Upgrade upgrade{bench, std::get<HexImage>(parseHexImage(bytesOf(hexFile(9)))), window.get()};

    std::string said() { return labelOf(upgrade, "Phase"); }
    int logged() { return test::find<QPlainTextEdit>(upgrade, "Log").blockCount(); }

    // The whole upload, with something done while the erase is awaited.
    void run(const std::function<void()>& duringErase)
    {
        const When erasing([this] { return port.simulator().bootLoader().erased(); }, duringErase);
        upgrade.show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return erasing.hasActed() && !state.lineBusy; }, 5000));
        EXPECT_TRUE(upgrade.isVisible());
    }
};

TEST(UpgradeWindow, ItsLogCanBeCopiedAndItsQuestionDoesNotHoldItUp)
{
    UpgradeBench bench;
    bench.driver.leaveAlone("StopQuestion");
    EXPECT_FALSE(find(bench.upgrade, "CopyLog").isEnabled());
    QPointer<QWidget> question;
    bench.run([&] {
        EXPECT_TRUE(bench.state.lineBusy);
        EXPECT_EQ(bench.logged(), 38) << "19 messages with their replies";
        click(bench.upgrade, "CopyLog");
        bench.upgrade.close();
        question = QApplication::activeModalWidget();
    });
    EXPECT_TRUE(question.isNull()) << "taken away at the end";
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        QStringLiteral("Der Speicher wird gelöscht\n> 1B 01 00 01 0E 01 14\n< 1B")));
    EXPECT_EQ(bench.flashed(), 256U);
    EXPECT_EQ(bench.said(), "Der Decoder hat alle 2 Seiten angenommen.");
    EXPECT_EQ(find<QProgressBar>(bench.upgrade, "Progress").value(), 100);
}

TEST(UpgradeWindow, AYesStopsItBeforeTheNextMessage)
{
    UpgradeBench bench;
    bench.expectBox(Message::stopTransferQuestion, "Ja");
    bench.run([&] { bench.upgrade.close(); });
    EXPECT_EQ(bench.flashed(), 0U);
    EXPECT_TRUE(bench.said().starts_with("Die Übertragung ist nicht bis zum Ende gelaufen."));
    EXPECT_EQ(bench.logged(), 40) << "the log is kept";
    bench.upgrade.close();
    EXPECT_FALSE(bench.upgrade.isVisible()) << "nothing to ask any more";
}

TEST(UpgradeWindow, ThreeMessagesWithoutAReplyOfferToStop)
{
    UpgradeBench bench;
    bench.port.simulator().setFault(sim::Fault::silence);
    bench.state.link.timeOutInterval = std::chrono::milliseconds(20);
    bench.expectBox(Message::noLoaderQuestion, "Ja");
    bench.upgrade.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone() && !bench.state.lineBusy; }, 5000));
    EXPECT_NE(bench.said().find("Kein Bootloader hat geantwortet."), std::string::npos) << bench.said();
    bench.upgrade.close();
}

TEST(HauptformFirmware, ClosingTheProgramDuringAnUploadAsksFirstAndAllElseWaits)
{
    for (const bool stops : {false, true}) {
        FirmwareBench bench;
        const When begun([&] { return bench.hasBegun(); }, [&] { bench.closeAndStay(); });
        bench.expectUpload(bench.pathOf("a.hex"));
        bench.expectBox(Message::stopTransferQuestion, stops ? "Ja" : "Nein");
        std::optional<When> done;
        if (!stops)
            done.emplace([&] { return bench.flashed() != 0 && !bench.state.lineBusy; },
                         [] { FirmwareBench::closeTransfer(); });
        bench.choose("mnu_kv07_Firmware");
        EXPECT_EQ(bench.window->isVisible(), !stops);
        EXPECT_EQ(bench.flashed(), stops ? 0U : 256U);
        EXPECT_TRUE(bench.item("mnu_read_all").isEnabled());
    }
}

// An interface gives a record up that does not come in time: the update goes on while the question stands.
TEST(HauptformFirmware, ClosingTheProgramOrTheProgressDuringAnUpdateAsksFirst)
{
    const struct {
        bool ofProgram;
        const char* answer;
    } cases[] = {{true, "Nein"}, {true, "Ja"}, {false, "Ja"}, {true, ""}};
    for (const auto& [ofProgram, answer] : cases) {
        FirmwareBench bench;
        const bool stops = answer == std::string("Ja");
        const When begun(
            [&] { return bench.hasBegun(); },
            [&, all = ofProgram] { all ? bench.closeAndStay() : FirmwareBench::closeTransfer(); });
        bench.expectUpdate();
        if (*answer == 0)
            bench.driver.leaveAlone("StopQuestion");
        else
            bench.expectBox(Message::stopTransferQuestion, answer);
        if (stops)
            bench.expectBox(Message::updateStopped);
        bench.choose("mnu_firmware");
        EXPECT_TRUE(bench.driver.isDone());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        EXPECT_EQ(bench.window->isVisible(), !(ofProgram && stops));
        EXPECT_EQ(bench.taken().isComplete(), !stops);
        EXPECT_EQ(bench.taken().image().size(), stops ? 8U * 16 : 10U * 16) << "it ends between two blocks";
    }
}

TEST(HauptformFirmware, AnUnchosenFileEndsItAndAListReadBeforeAnUpdateIsMarked)
{
    FirmwareBench bench;
    bench.expectUpload("");
    bench.expectBox(Message::noFileChosen);
    bench.choose("mnu_kv07_Firmware");
    bench.expectDialog("*.uhx", "");
    bench.expectBox(Message::noUpdateChosen);
    bench.choose("mnu_firmware");
    EXPECT_FALSE(bench.port.isOpen());
    bench.click("Start");
    auto& notice = bench.find<QFrame>("StaleNotice");
    EXPECT_FALSE(notice.isVisible());
    bench.expectUpdate();
    bench.choose("mnu_firmware");
    EXPECT_TRUE(notice.isVisible());
    bench.click("ReadAnew");
    EXPECT_FALSE(notice.isVisible());
}

} // namespace karvo::test
