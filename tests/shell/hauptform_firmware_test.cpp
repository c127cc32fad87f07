// Renewing firmware from the main window.
#include "window_bench.h"

#include "firmware/interface_update.h"
#include "support/hex_file.h"
#include "support/when.h"

#include <QFileDialog>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>

namespace karvo::test
{
namespace
{

std::string updateFile(int records)
{
    std::string content = "1F80\r\nUpdate Ende\r\n";
    for (int i = 0; i < records; ++i)
        content += ":1000000102030405060708090A0B0C0D0E0F\r\n";
    return content;
}

// The dialogs look at the real disk, the program at the files of the bench: a file is on both.
struct FirmwareBench : WindowBench {
    QTemporaryDir folder;

    FirmwareBench()
    {
        state.link.timeOutInterval = std::chrono::milliseconds(300); // so long the erase is awaited
        state.link.interfaceAnswered = true;
        put("a.hex", hexFile(9));
        put("a.uhx", updateFile(10)); // 55 ms a record
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
            auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            EXPECT_EQ(name->text().toStdString(), proposed);
            if (chosen == nullptr) {
                dialog.reject();
                return;
            }
            name->setText(folder.filePath(QString::fromLatin1(chosen)));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
    void expectImageDialog(const char* chosen)
    {
        expectDialog("KV07_29August2022_Alle_Versionen.hex", chosen);
    }
    bool isDone() { return hasBegun() && !state.lineBusy; }
    std::size_t flashed() { return port.simulator().bootLoader().flash().size(); }
    static void closeTransfer() { QApplication::activeModalWidget()->close(); }
    bool hasBegun() { return port.simulator().bootLoader().erased() || !taken().image().empty(); }
    const sim::UpdateMode& taken() { return port.simulator().update(); }
    void expectStopQuestion(const char* button)
    {
        driver.expectBox(message(Message::stopTransferQuestion), QString::fromLatin1(button));
    }
    void closeAndStay()
    {
        window->close();
        EXPECT_TRUE(window->isVisible());
    }
};

} // namespace

TEST(HauptformFirmware, CancelStopsAsAnUnchosenFileDoes)
{
    FirmwareBench bench;
    bench.expectImageDialog(nullptr);
    bench.driver.expectBox(bench.message(Message::noFileChosen), QStringLiteral("OK"));
    bench.item("mnu_kv07_Firmware").trigger();
    EXPECT_TRUE(bench.driver.isDone());
    bench.expectDialog("*.uhx", nullptr);
    bench.driver.expectBox(bench.message(Message::noUpdateChosen), QStringLiteral("OK"));
    bench.item("mnu_firmware").trigger();
    EXPECT_TRUE(bench.driver.isDone());
    EXPECT_FALSE(bench.port.isOpen());
}

TEST(HauptformFirmware, TheLineIsBusyForAllElseDuringAnUpload)
{
    FirmwareBench bench;
    bench.expectImageDialog("a.hex");
    bench.driver.leaveAlone("Upgrade");
    const When busy(
        [&] { return bench.hasBegun(); },
        [&] {
            for (const char* const name : {"mnu_read_all", "mnu_kv07_Firmware", "mnu_firmware", "mnu_open"})
                EXPECT_FALSE(bench.item(name).isEnabled()) << name;
            EXPECT_FALSE(bench.find<QPushButton>("Start").isEnabled());
            EXPECT_FALSE(bench.find<QComboBox>("COM").isEnabled());
        });
    const When done([&] { return bench.isDone(); }, [&] { bench.closeTransfer(); });
    bench.item("mnu_kv07_Firmware").trigger();
    EXPECT_EQ(bench.flashed(), 256U);
    EXPECT_TRUE(bench.item("mnu_read_all").isEnabled());
    EXPECT_TRUE(bench.window->isVisible());
}

TEST(HauptformFirmware, ClosingTheProgramDuringAnUploadAsksAndGoesOnAfterANo)
{
    FirmwareBench bench;
    bench.expectImageDialog("a.hex");
    bench.driver.leaveAlone("Upgrade");
    const When begun([&] { return bench.hasBegun(); }, [&] { bench.closeAndStay(); });
    bench.expectStopQuestion("Nein");
    const When done([&] { return bench.isDone(); }, [&] { bench.closeTransfer(); });
    bench.item("mnu_kv07_Firmware").trigger();
    EXPECT_TRUE(bench.window->isVisible());
    EXPECT_EQ(bench.flashed(), 256U);
}

TEST(HauptformFirmware, ClosingTheProgramDuringAnUploadStopsItAfterAYes)
{
    FirmwareBench bench;
    bench.expectImageDialog("a.hex");
    bench.driver.leaveAlone("Upgrade");
    const When begun([&] { return bench.hasBegun(); }, [&] { bench.closeAndStay(); });
    bench.expectStopQuestion("Ja");
    bench.item("mnu_kv07_Firmware").trigger();
    EXPECT_FALSE(bench.window->isVisible());
    EXPECT_EQ(bench.flashed(), 0U);
}

TEST(HauptformFirmware, ClosingTheProgramDuringAnUpdateAsksFirst)
{
    for (const bool stops : {false, true}) {
        FirmwareBench bench;
        bench.expectDialog("*.uhx", "a.uhx");
        bench.driver.leaveAlone("Firmware_Ablauf");
        const When begun([&] { return bench.hasBegun(); }, [&] { bench.closeAndStay(); });
        bench.expectStopQuestion(stops ? "Ja" : "Nein");
        if (stops)
            bench.driver.expectBox(bench.message(Message::updateStopped), QStringLiteral("OK"));
        bench.item("mnu_firmware").trigger();
        EXPECT_TRUE(bench.driver.isDone());
        EXPECT_EQ(bench.window->isVisible(), !stops);
        EXPECT_EQ(bench.taken().isComplete(), !stops);
        EXPECT_EQ(bench.taken().image().size(), stops ? 8U * 16 : 10U * 16) << "it ends between two blocks";
    }
}

TEST(HauptformFirmware, ClosingTheProgressOfAnUpdateAsksFirst)
{
    FirmwareBench bench;
    bench.expectDialog("*.uhx", "a.uhx");
    bench.driver.leaveAlone("Firmware_Ablauf");
    const When begun([&] { return bench.hasBegun(); }, [&] { bench.closeTransfer(); });
    bench.expectStopQuestion("Ja");
    bench.driver.expectBox(bench.message(Message::updateStopped), QStringLiteral("OK"));
    bench.item("mnu_firmware").trigger();
    EXPECT_TRUE(bench.window->isVisible());
    EXPECT_EQ(bench.taken().image().size(), 8U * 16);
    EXPECT_FALSE(bench.taken().isComplete());
}

TEST(HauptformFirmware, AListReadBeforeAnUpdateIsMarkedAndCanBeReadAnew)
{
    FirmwareBench bench;
    bench.find<QPushButton>("Start").click();
    auto& notice = bench.find<QFrame>("StaleNotice");
    EXPECT_FALSE(notice.isVisible());
    bench.put("a.uhx", updateFile(1));
    bench.expectDialog("*.uhx", "a.uhx");
    bench.driver.leaveAlone("Firmware_Ablauf");
    bench.item("mnu_firmware").trigger();
    EXPECT_TRUE(notice.isVisible());
    bench.find<QPushButton>("ReadAnew").click();
    EXPECT_FALSE(notice.isVisible());
}

// An interface gives a record up that does not come in time.
TEST(HauptformFirmware, AnUpdateGoesOnWhileTheQuestionStands)
{
    FirmwareBench bench;
    bench.expectDialog("*.uhx", "a.uhx");
    bench.driver.leaveAlone("Firmware_Ablauf");
    bench.driver.leaveAlone("StopQuestion");
    const When begun([&] { return bench.hasBegun(); }, [&] { bench.closeAndStay(); });
    bench.item("mnu_firmware").trigger();
    EXPECT_TRUE(bench.taken().isComplete());
    EXPECT_TRUE(bench.window->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace karvo::test
