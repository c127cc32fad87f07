// Lists as files in the main window, and firmware out of files.
#include "shell/window_bench.h"
#include "support/hex_file.h"
#include "support/when.h"

#include <QFileDialog>
#include <QTemporaryDir>

namespace karvo::test
{

// The dialogs look at the real disk, the program at the files of the bench: a file is on both.
struct FilesBench : WindowBench {
    QTemporaryDir folder;

    FilesBench()
    {
        state.userFolders.cvLists.own = folder.path().toStdString();
        state.recovery.file = "recovery.kvr";
        put("bus.kvr", "Standard KV07*6\r\n1;42;Adresse;1;126;3;\r\n48;5;x;0;255;9;\r\n"
                       "Ende CV\r\nATmega328\r\nFirmware_Version: 6\r\nEnde FS\r\n");
    }
    std::string pathOf(const char* name) const
    {
        return folder.filePath(QString::fromLatin1(name)).toStdString();
    }
    void put(const char* name, const std::string& content)
    {
        QFile onDisk(QString::fromStdString(pathOf(name)));
        ASSERT_TRUE(onDisk.open(QIODevice::WriteOnly));
        onDisk.write(content.data(), static_cast<qint64>(content.size()));
        files.content[pathOf(name)] = bytesOf(content);
    }
    bool holds(const char* name, const std::string& part)
    {
        const Bytes& content = files.content[pathOf(name)];
        return std::string(content.begin(), content.end()).find(part) != std::string::npos;
    }
    bool isKept() const { return files.content.count("recovery.kvr") != 0; }

    // The file dialog with this filter or proposed name; nothing chosen cancels it.
    void expectDialog(const char* what, const std::string& chosen)
    {
        expect("file dialog", [this, what, chosen](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            auto& name = test::find<QLineEdit>(dialog, "fileNameEdit");
            EXPECT_TRUE(name.text() == QString::fromLatin1(what) ||
                        dialog.nameFilters().contains(QString::fromLatin1(what)))
                << name.text().toStdString();
            name.setText(QString::fromStdString(chosen));
            QMetaObject::invokeMethod(&dialog, chosen.empty() ? "reject" : "accept");
        });
    }
    void openBus()
    {
        expectDialog("*.kvr", "bus.kvr");
        choose("mnu_open");
    }
};

TEST(HauptformFiles, OpensChangesAndSavesAList)
{
    FilesBench bench;
    EXPECT_FALSE(bench.item("mnu_save").isEnabled());
    bench.openBus();
    EXPECT_EQ(bench.lineOf(1), "CV1  = 42");
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Firmware = 6 | bus.kvr[*]");
    bench.change(48, 7);
    EXPECT_TRUE(bench.window->isWindowModified());
    bench.choose("mnu_save");
    EXPECT_FALSE(bench.window->isWindowModified());
    EXPECT_EQ(bench.text("Status"), "Gespeichert: " + bench.pathOf("bus.kvr"));
    EXPECT_TRUE(bench.holds("bus.kvr", "\r\n48;7;x;0;255;9;\r\n"));
    bench.expectDialog("*.kvr", "Bus 1.5");
    bench.choose("mnu_save_as");
    EXPECT_EQ(bench.state.set.listPath, bench.pathOf("Bus 1.5.kvr"));

    bench.expectDialog("*.kvr", "bus");
    bench.expectBoxWith("bus.kvr"); // asked once, and answered as a box that is closed
    bench.expectDialog("*.kvr", "");
    bench.choose("mnu_save_as");
    EXPECT_EQ(bench.state.set.listPath, bench.pathOf("Bus 1.5.kvr"));
}

TEST(HauptformFiles, AsksBeforeUnsavedChangesAreLost)
{
    FilesBench bench;
    bench.openBus();
    bench.change(48, 7);
    bench.state.link.identified = true;
    for (const auto& item : wordsOf("mnu_clear mnu_kv07 mnu_open mnu_read_all mnu_exit")) {
        bench.expectBox(Message::unsavedChangesQuestion, "Abbrechen");
        bench.choose(item);
        EXPECT_TRUE(bench.driver.isDone()) << item;
        EXPECT_EQ(bench.state.set.table.value(48), 7) << item;
        EXPECT_TRUE(bench.window->isVisible());
    }
    bench.expectBox(Message::unsavedChangesQuestion, "Speichern");
    bench.choose("mnu_clear");
    EXPECT_TRUE(bench.holds("bus.kvr", "48;7;"));
    EXPECT_EQ(bench.list().count(), 0);
}

TEST(HauptformFiles, KeepsUnsavedChangesUntilTheProgramEndsCleanly)
{
    for (const bool refused : {false, true}) {
        FilesBench bench;
        bench.openBus();
        bench.change(48, 7);
        EXPECT_TRUE(bench.isKept());
        if (refused) {
            bench.find<QComboBox>("COM").setCurrentIndex(3); // the interface is at COM5
            bench.expectBoxWith("\r\n\r\nDie Schnittstelle COM4 ");
            bench.click("Einzelne_speichern");
        } else {
            bench.expectBox(Message::unsavedChangesQuestion, "Verwerfen");
            bench.window->close();
        }
        EXPECT_EQ(bench.prompts.hasEnded(), refused);
        EXPECT_EQ(bench.isKept(), refused);
    }
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
