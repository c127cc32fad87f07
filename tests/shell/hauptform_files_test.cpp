// Lists as files in the main window.
#include "shell/window_bench.h"
#include "workbench/recovery.h"

#include <QFileDialog>
#include <QTemporaryDir>

namespace karvo::test
{

const std::string savedBus = "Standard KV07*6\r\n1;42;Adresse;1;126;3;\r\n48;5;x;0;255;9;\r\n"
                             "Ende CV\r\nATmega328\r\nFirmware_Version: 6\r\nEnde FS\r\n";

// The dialogs look at the real disk, the program at the files of the bench: a list is on both.
struct FilesBench : WindowBench {
    QTemporaryDir folder;
    std::filesystem::path bus = pathOf("bus.kvr");

    FilesBench()
    {
        state.userFolders.cvLists.own = folder.path().toStdString();
        files.content[bus] = bytesOf(savedBus);
        QFile onDisk(QString::fromStdString(bus.string()));
        EXPECT_TRUE(onDisk.open(QIODevice::WriteOnly));
        onDisk.write(savedBus.data(), static_cast<qint64>(savedBus.size()));
    }

    std::filesystem::path pathOf(const char* name) const
    {
        return folder.filePath(QString::fromLatin1(name)).toStdString();
    }
    std::string saved(const char* name)
    {
        const Bytes& content = files.content[pathOf(name)];
        return {content.begin(), content.end()};
    }
    bool isKept() const { return files.content.count("recovery.kvr") != 0; }

    // The file dialog, which has to start in the folder of CV lists; nothing typed cancels it.
    void expectDialog(const char* title, const char* name)
    {
        driver.expect(QString::fromLatin1(title), [this, title, name](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            EXPECT_EQ(dialog.windowTitle().toStdString(), title);
            EXPECT_EQ(dialog.directory().absolutePath(), folder.path());
            EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("*.kvr")));
            if (name == nullptr) {
                dialog.reject();
                return;
            }
            test::find<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromLatin1(name));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
    void openBus()
    {
        expectDialog("Abgespeicherte Liste", "bus.kvr");
        choose("mnu_open");
    }
    void saveAs(const char* name) { expectDialog("CV Liste speichern unter", name); }
    void change48()
    {
        chooseCv(48);
        find<QLineEdit>("CV_Wert").setText(QStringLiteral("7"));
        click("Enter_Taste");
        ASSERT_EQ(state.set.table.value(48), 7);
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
    EXPECT_FALSE(bench.window->isWindowModified());
    bench.change48();
    EXPECT_TRUE(bench.window->isWindowModified());
    bench.choose("mnu_save");
    EXPECT_FALSE(bench.window->isWindowModified());
    EXPECT_EQ(bench.text("Status"), "Gespeichert: " + bench.bus.string());
    EXPECT_NE(bench.saved("bus.kvr").find("\r\n48;7;x;0;255;9;\r\n"), std::string::npos);
    bench.saveAs("Bus 1.5");
    bench.choose("mnu_save_as");
    EXPECT_EQ(bench.saved("Bus 1.5.kvr"), bench.saved("bus.kvr"));
    EXPECT_EQ(bench.state.set.listPath, bench.pathOf("Bus 1.5.kvr"));
}

TEST(HauptformFiles, AnExistingFileIsReplacedWithConsentOnly)
{
    FilesBench bench;
    bench.showOfflineList();
    const Text path[] = {textFromUtf8(bench.bus.string())};
    const auto question =
        QString::fromStdU16String(filledIn(bench.state.texts.message(Message::replaceFileQuestion), path));
    bench.saveAs("bus");
    bench.driver.expectBox(question, QStringLiteral("Nein"));
    bench.saveAs(nullptr);
    bench.choose("mnu_save_as");
    EXPECT_EQ(bench.saved("bus.kvr"), savedBus);
    bench.saveAs("bus");
    bench.driver.expectBox(question, QStringLiteral("Ja"));
    bench.choose("mnu_save_as");
    EXPECT_TRUE(bench.saved("bus.kvr").starts_with("Standard KV07*0\r\n1;1;deutsch 1;"));
}

TEST(HauptformFiles, AsksBeforeUnsavedChangesAreLost)
{
    FilesBench bench;
    bench.openBus();
    bench.change48();
    bench.state.link.identified = true;
    for (const auto& item : wordsOf("mnu_clear mnu_kv07 mnu_open mnu_read_all mnu_exit")) {
        bench.expectBox(Message::unsavedChangesQuestion, "Abbrechen");
        bench.choose(item);
        EXPECT_TRUE(bench.driver.isDone()) << item;
        EXPECT_EQ(bench.state.set.table.value(48), 7) << item;
        EXPECT_TRUE(bench.window->isVisible());
    }
    EXPECT_EQ(bench.saved("bus.kvr"), savedBus);
    bench.expectBox(Message::unsavedChangesQuestion, "Speichern");
    bench.choose("mnu_clear");
    EXPECT_NE(bench.saved("bus.kvr").find("48;7;"), std::string::npos);
    EXPECT_EQ(bench.list().count(), 0);
}

TEST(HauptformFiles, KeepsUnsavedChangesUntilTheProgramEndsCleanly)
{
    Bytes kept;
    {
        FilesBench bench;
        bench.state.recovery.file = "recovery.kvr";
        bench.openBus();
        EXPECT_FALSE(bench.isKept());
        bench.change48();
        kept = bench.files.content["recovery.kvr"];
        EXPECT_FALSE(kept.empty());
        bench.expectBox(Message::unsavedChangesQuestion, "Verwerfen");
        bench.window->close();
        EXPECT_FALSE(bench.isKept());
    }
    FilesBench next;
    next.files.content["recovery.kvr"] = kept;
    next.state.recovery.file = "recovery.kvr";
    next.expect("recover?",
                [](QWidget& box) { dynamic_cast<QMessageBox&>(box).button(QMessageBox::Yes)->click(); });
    ASSERT_TRUE(offerRecovery(next.bench));
    EXPECT_EQ(next.lineOf(48), "CV48 = 7  geändert");
    EXPECT_TRUE(next.window->isWindowModified());
}

TEST(HauptformFiles, ARefusedPortEndsTheProgramAndKeepsWhatIsUnsaved)
{
    FilesBench bench;
    bench.state.recovery.file = "recovery.kvr";
    bench.openBus();
    bench.change48();
    bench.find<QComboBox>("COM").setCurrentIndex(3); // the interface is at COM5
    bench.expect("refused", [&](QWidget& window) {
        const QString text = dynamic_cast<QMessageBox&>(window).text();
        EXPECT_TRUE(
            text.startsWith(QStringLiteral("No such file or directory\r\n\r\nDie Schnittstelle COM4 ")))
            << text.toStdString();
        EXPECT_TRUE(text.endsWith(bench.message(Message::unsavedWorkKept)));
        window.close();
    });
    bench.click("Einzelne_speichern");
    EXPECT_TRUE(bench.prompts.hasEnded());
    EXPECT_TRUE(bench.isKept());
}

} // namespace karvo::test
