// Renewing firmware from the main window.
#include "firmware/interface_update.h"
#include "shell/window_bench.h"
#include "support/hex_file.h"
#include "support/when.h"

#include <QFileDialog>
#include <QTemporaryDir>

namespace karvo::test
{

// The dialogs look at the real disk, the program at the files of the bench: a file is on both.
struct FirmwareBench : WindowBench {
    QTemporaryDir folder;

    explicit FirmwareBench(int records = 10) // 55 ms a record
    {
        state.link.timeOutInterval = std::chrono::milliseconds(300); // so long the erase is awaited
        state.link.interfaceAnswered = true;
        put("a.hex", hexFile(9));
        std::string update = "1F80\r\nUpdate Ende\r\n";
        for (int i = 0; i < records; ++i)
            update += ":1000000102030405060708090A0B0C0D0E0F\r\n";
        put("a.uhx", update);
        driver.leaveAlone("Upgrade");
        driver.leaveAlone("Firmware_Ablauf");
    }

    void put(const char* name, const std::string& content)
    {
        QFile onDisk(folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(onDisk.open(QIODevice::WriteOnly));
        onDisk.write(content.data(), static_cast<qint64>(content.size()));
        files.content[onDisk.fileName().toStdString()] = bytesOf(content);
    }
    // Nothing chosen cancels the dialog, in whose field a name is proposed.
    void expectDialog(const char* proposed, const char* chosen)
    {
        driver.expect(QString::fromLatin1(proposed), [this, proposed, chosen](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            auto& name = test::find<QLineEdit>(dialog, "fileNameEdit");
            EXPECT_EQ(name.text().toStdString(), proposed);
            if (chosen == nullptr) {
                dialog.reject();
                return;
            }
            name.setText(folder.filePath(QString::fromLatin1(chosen)));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
    void expectUpload(const char* chosen = "a.hex")
    {
        expectDialog("KV07_29August2022_Alle_Versionen.hex", chosen);
    }
    void expectUpdate(const char* chosen = "a.uhx") { expectDialog("*.uhx", chosen); }
    bool hasBegun() { return port.simulator().bootLoader().erased() || !taken().image().empty(); }
    bool isDone() { return hasBegun() && !state.lineBusy; }
    std::size_t flashed() { return port.simulator().bootLoader().flash().size(); }
    const sim::UpdateMode& taken() { return port.simulator().update(); }
    void close(bool program)
    {
        program ? window->close() : QApplication::activeModalWidget()->close();
        EXPECT_TRUE(window->isVisible());
    }
};

TEST(HauptformFirmware, CancelStopsAsAnUnchosenFileDoes)
{
    FirmwareBench bench;
    bench.expectUpload(nullptr);
    bench.expectBox(Message::noFileChosen);
    bench.choose("mnu_kv07_Firmware");
    bench.expectUpdate(nullptr);
    bench.expectBox(Message::noUpdateChosen);
    bench.choose("mnu_firmware");
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_FALSE(bench.port.isOpen());
}

// Of the program, or of the window of the transfer alone.
struct Closing {
    bool ofProgram;
    bool stops;
};
const Closing closings[] = {{true, false}, {true, true}, {false, true}};

TEST(HauptformFirmware, ClosingDuringAnUploadAsksFirstAndAllElseWaits)
{
    for (const auto& [ofProgram, stops] : closings) {
        FirmwareBench bench;
        const When begun([&] { return bench.hasBegun(); },
                         [&, all = ofProgram] {
                             for (const auto& name :
                                  wordsOf("mnu_read_all mnu_kv07_Firmware mnu_firmware mnu_open"))
                                 EXPECT_FALSE(bench.item(name).isEnabled()) << name;
                             EXPECT_FALSE(bench.isEnabled("Start") || bench.isEnabled("COM"));
                             bench.close(all);
                         });
        bench.expectUpload();
        bench.expectBox(Message::stopTransferQuestion, stops ? "Ja" : "Nein");
        std::optional<When> done; // its log stays until it is closed
        if (!(ofProgram && stops))
            done.emplace([&] { return bench.isDone(); }, [&] { bench.close(false); });
        bench.choose("mnu_kv07_Firmware");
        EXPECT_EQ(bench.window->isVisible(), !(ofProgram && stops));
        EXPECT_EQ(bench.flashed(), stops ? 0U : 256U);
        EXPECT_TRUE(bench.item("mnu_read_all").isEnabled());
    }
}

TEST(HauptformFirmware, ClosingDuringAnUpdateAsksFirst)
{
    for (const auto& [ofProgram, stops] : closings) {
        FirmwareBench bench;
        const When begun([&] { return bench.hasBegun(); }, [&, all = ofProgram] { bench.close(all); });
        bench.expectUpdate();
        bench.expectBox(Message::stopTransferQuestion, stops ? "Ja" : "Nein");
        if (stops)
            bench.expectBox(Message::updateStopped);
        bench.choose("mnu_firmware");
        EXPECT_TRUE(bench.driver.isDone());
        EXPECT_EQ(bench.window->isVisible(), !(ofProgram && stops));
        EXPECT_EQ(bench.taken().isComplete(), !stops);
        EXPECT_EQ(bench.taken().image().size(), stops ? 8U * 16 : 10U * 16) << "it ends between two blocks";
    }
}

TEST(HauptformFirmware, AListReadBeforeAnUpdateIsMarkedAndCanBeReadAnew)
{
    FirmwareBench bench(1);
    bench.click("Start");
    auto& notice = bench.find<QFrame>("StaleNotice");
    EXPECT_FALSE(notice.isVisible());
    bench.expectUpdate();
    bench.choose("mnu_firmware");
    EXPECT_TRUE(notice.isVisible());
    bench.click("ReadAnew");
    EXPECT_FALSE(notice.isVisible());
}

// An interface gives a record up that does not come in time.
TEST(HauptformFirmware, AnUpdateGoesOnWhileTheQuestionStands)
{
    FirmwareBench bench;
    bench.driver.leaveAlone("StopQuestion");
    const When begun([&] { return bench.hasBegun(); }, [&] { bench.close(true); });
    bench.expectUpdate();
    bench.choose("mnu_firmware");
    EXPECT_TRUE(bench.taken().isComplete());
    EXPECT_TRUE(bench.window->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace karvo::test
