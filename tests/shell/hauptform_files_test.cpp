// Lists as files in the main window.
#include "window_bench.h"

#include "workbench/recovery.h"

#include <QFileDialog>
#include <QPushButton>
#include <QTemporaryDir>

namespace karvo::test
{
namespace
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
        put(bus, savedBus);
    }

    std::filesystem::path pathOf(const char* name) const
    {
        return folder.filePath(QString::fromLatin1(name)).toStdString();
    }
    void put(const std::filesystem::path& path, const std::string& content)
    {
        files.content[path] = bytesOf(content);
        QFile onDisk(QString::fromStdString(path.string()));
        ASSERT_TRUE(onDisk.open(QIODevice::WriteOnly));
        onDisk.write(content.data(), static_cast<qint64>(content.size()));
    }
    std::string saved(const char* name)
    {
        const Bytes& content = files.content[pathOf(name)];
        return {content.begin(), content.end()};
    }

    // The file dialog, which has to start in the folder of CV lists; nothing typed cancels it.
    void expectDialog(const char* title, const std::optional<QString>& name)
    {
        driver.expect(QString::fromLatin1(title), [this, title, name](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            EXPECT_EQ(dialog.windowTitle().toStdString(), title);
            EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder.path().toStdString());
            EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("*.kvr")));
            if (!name) {
                dialog.reject();
                return;
            }
            dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(*name);
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
    void change(int cv, int value)
    {
        chooseCv(cv);
        find<QLineEdit>("CV_Wert").setText(QString::number(value));
        find<QPushButton>("Enter_Taste").click();
        ASSERT_EQ(state.set.table.value(cv), value);
    }
};

} // namespace

TEST(HauptformFiles, OpensChangesAndSavesAList)
{
    FilesBench bench;
    EXPECT_FALSE(bench.item("mnu_save").isEnabled());
    bench.expectDialog("Abgespeicherte Liste", QStringLiteral("bus.kvr"));
    bench.item("mnu_open").trigger();
    EXPECT_EQ(bench.list().item(0)->text().toStdString(), "CV1  = 42");
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Firmware = 6 | bus.kvr[*]");
    EXPECT_FALSE(bench.window->isWindowModified());
    bench.change(48, 7);
    EXPECT_TRUE(bench.window->isWindowModified());
    bench.item("mnu_save").trigger();
    EXPECT_FALSE(bench.window->isWindowModified());
    EXPECT_EQ(bench.text("Status"), "Gespeichert: " + bench.bus.string());
    EXPECT_NE(bench.saved("bus.kvr").find("\r\n48;7;x;0;255;9;\r\n"), std::string::npos);

    bench.expectDialog("CV Liste speichern unter", QStringLiteral("Bus 1.5"));
    bench.item("mnu_save_as").trigger();
    EXPECT_EQ(bench.saved("Bus 1.5.kvr"), bench.saved("bus.kvr"));
    EXPECT_EQ(bench.state.set.listPath, bench.pathOf("Bus 1.5.kvr"));
}

TEST(HauptformFiles, AnExistingFileIsReplacedWithConsentOnly)
{
    FilesBench bench;
    bench.showOfflineList();
    const QString question =
        QString::fromStdU16String(filledIn(bench.state.texts.message(Message::replaceFileQuestion),
                                           std::vector{textFromUtf8(bench.bus.string())}));
    bench.expectDialog("CV Liste speichern unter", QStringLiteral("bus"));
    bench.driver.expectBox(question, QStringLiteral("Nein"));
    bench.expectDialog("CV Liste speichern unter", std::nullopt);
    bench.item("mnu_save_as").trigger();
    EXPECT_EQ(bench.saved("bus.kvr"), savedBus);
    bench.expectDialog("CV Liste speichern unter", QStringLiteral("bus"));
    bench.driver.expectBox(question, QStringLiteral("Ja"));
    bench.item("mnu_save_as").trigger();
    EXPECT_TRUE(bench.saved("bus.kvr").starts_with("Standard KV07*0\r\n1;1;deutsch 1;"));
}

TEST(HauptformFiles, AsksBeforeUnsavedChangesAreLost)
{
    FilesBench bench;
    bench.expectDialog("Abgespeicherte Liste", QStringLiteral("bus.kvr"));
    bench.item("mnu_open").trigger();
    bench.change(48, 7);
    const QString question = bench.message(Message::unsavedChangesQuestion);
    bench.state.link.identified = true;
    for (const char* item : {"mnu_clear", "mnu_kv07", "mnu_open", "mnu_read_all", "mnu_exit"}) {
        bench.driver.expectBox(question, QStringLiteral("Abbrechen"));
        bench.item(item).trigger();
        EXPECT_TRUE(bench.driver.isDone()) << item;
        EXPECT_EQ(bench.state.set.table.value(48), 7) << item;
        EXPECT_TRUE(bench.window->isVisible());
    }
    EXPECT_EQ(bench.saved("bus.kvr"), savedBus);
    bench.driver.expectBox(question, QStringLiteral("Speichern"));
    bench.item("mnu_clear").trigger();
    EXPECT_NE(bench.saved("bus.kvr").find("48;7;"), std::string::npos);
    EXPECT_EQ(bench.list().count(), 0);
}

TEST(HauptformFiles, KeepsUnsavedChangesUntilTheProgramEndsCleanly)
{
    Bytes kept;
    std::filesystem::path bus;
    {
        FilesBench bench;
        bench.state.recovery.file = "recovery.kvr";
        bench.expectDialog("Abgespeicherte Liste", QStringLiteral("bus.kvr"));
        bench.item("mnu_open").trigger();
        EXPECT_FALSE(bench.files.content.count("recovery.kvr"));
        bench.change(48, 7);
        ASSERT_TRUE(bench.files.content.count("recovery.kvr"));
        kept = bench.files.content["recovery.kvr"];
        bus = bench.bus;
        bench.driver.expectBox(bench.message(Message::unsavedChangesQuestion), QStringLiteral("Verwerfen"));
        bench.window->close();
        EXPECT_FALSE(bench.files.content.count("recovery.kvr"));
    }

    FilesBench next;
    next.files.content["recovery.kvr"] = kept;
    next.state.recovery.file = "recovery.kvr";
    next.driver.expectBox(
        QString::fromStdU16String(filledIn(
            next.state.texts.message(Message::recoveryQuestion),
            std::vector<Text>{textFromUtf8(bus.string()), u"2026-11-24 08:05", u"1", u"recovery.kvr.old"})),
        QStringLiteral("Ja"));
    EXPECT_TRUE(offerRecovery(next.bench));
    EXPECT_EQ(next.state.set.table.value(48), 7);
    EXPECT_TRUE(next.window->isWindowModified());
    EXPECT_EQ(next.state.set.listPath, bus);
}

TEST(HauptformFiles, ARefusedPortEndsTheProgramAndKeepsWhatIsUnsaved)
{
    FilesBench bench;
    bench.state.recovery.file = "recovery.kvr";
    bench.expectDialog("Abgespeicherte Liste", QStringLiteral("bus.kvr"));
    bench.item("mnu_open").trigger();
    bench.change(48, 7);
    bench.find<QComboBox>("COM").setCurrentIndex(3); // the interface is at COM5
    bench.driver.expect(QStringLiteral("refused"), [&](QWidget& window) {
        const QString text = qobject_cast<QMessageBox*>(&window)->text();
        EXPECT_TRUE(
            text.startsWith(QStringLiteral("No such file or directory\r\n\r\nDie Schnittstelle COM4 ")))
            << text.toStdString();
        EXPECT_TRUE(text.endsWith(bench.message(Message::unsavedWorkKept)));
        window.close();
    });
    bench.find<QPushButton>("Einzelne_speichern").click();
    EXPECT_TRUE(bench.prompts.hasEnded());
    EXPECT_TRUE(bench.files.content.count("recovery.kvr"));
}

} // namespace karvo::test
