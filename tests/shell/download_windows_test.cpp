#include "window_bench.h"

#include "support/scratch_folder.h"

#include <QFileDialog>
#include <QProgressDialog>
#include <QPushButton>

namespace karvo::test
{
namespace
{

struct DownloadWindowBench : WindowBench {
    explicit DownloadWindowBench(const BenchSetup& setup = {}) : WindowBench(setup)
    {
        state.driveC = scratch.path() / "C";
        std::filesystem::current_path(scratch.path());
        scratch.write("C/TEMP/Zip_Ordner/a.txt", "old");
        scratch.write("Update.zip", "");
    }
    // The file dialog, answered with a name.
    void chooseFile(const char* name)
    {
        driver.expect(QStringLiteral("file dialog"), [name](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            auto* const line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(line, nullptr);
            EXPECT_EQ(line->text().toStdString(), "*.zip");
            if (name == nullptr) {
                dialog.reject();
                return;
            }
            line->setText(QString::fromLatin1(name));
            QTest::keyClick(line, Qt::Key_Return);
        });
    }
    ScratchFolder scratch;
};

} // namespace

TEST(UnzipDialog, UnpacksTheChosenArchive)
{
    DownloadWindowBench bench({.language = LanguageCode::english});
    bench.archive.entries = {{{"a.txt", ArchiveEntry::Kind::file, false}, {"new"}}};
    bench.chooseFile("Update.zip");
    bench.driver.expect(QStringLiteral("Unzip_Dialog"), [&](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName().toStdString(), "Unzip_Dialog");
        const auto* const file = dialog.findChild<QLineEdit*>(QStringLiteral("Zip_File"));
        const auto* const folder = dialog.findChild<QLineEdit*>(QStringLiteral("Zip_Ordner"));
        ASSERT_TRUE(file != nullptr && folder != nullptr);
        EXPECT_TRUE(file->text().endsWith(QStringLiteral("Update.zip")));
        EXPECT_EQ(folder->text().toStdString(), "C:\\TEMP\\Zip_Ordner");
        dialog.findChild<QPushButton*>(QStringLiteral("OKButton"))->click();
    });
    const auto folder = bench.scratch.path() / "C/TEMP/Zip_Ordner";
    bench.driver.expectBox(
        QStringLiteral("Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner\r\n") +
            QString::fromStdString(folder.string()),
        QStringLiteral("OK"));
    bench.item("mnu_unzip").trigger();
    EXPECT_EQ(bench.scratch.read("C/TEMP/Zip_Ordner/a.txt"), "new");
    EXPECT_FALSE(bench.state.lineBusy);
}

TEST(UnzipDialog, NothingIsUnpackedWithoutAnArchiveOrConsent)
{
    DownloadWindowBench bench;
    bench.chooseFile(nullptr);
    bench.driver.expectBox(bench.message(Message::noFileChosen), QStringLiteral("OK"));
    bench.item("mnu_unzip").trigger();
    bench.chooseFile("Update.zip");
    bench.driver.expect(QStringLiteral("Unzip_Dialog"), [](QWidget& dialog) { dialog.close(); });
    bench.item("mnu_unzip").trigger();
    EXPECT_TRUE(bench.archive.read_.empty());
    EXPECT_EQ(bench.scratch.read("C/TEMP/Zip_Ordner/a.txt"), "old");
}

TEST(UnzipDialog, AFaultIsToldUnderItsTitle)
{
    DownloadWindowBench bench;
    bench.archive.fault = u"bad sum";
    bench.chooseFile("Update.zip");
    bench.driver.expect(QStringLiteral("Unzip_Dialog"), [](QWidget& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("OKButton"))->click();
    });
    bench.driver.expect(QStringLiteral("fault"), [](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.windowTitle().toStdString(), "error");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_TRUE(box.text().contains(QStringLiteral("(bad sum)"))) << box.text().toStdString();
        box.close();
    });
    bench.item("mnu_unzip").trigger();
}

TEST(DownloadWindow, ShowsHowFarItIsAndStopsWhenCancelled)
{
    DownloadWindowBench bench;
    bench.downloader.end = DownloadEnd::cancelled;
    bench.downloader.during = [&](DownloadObserver& observer) {
        EXPECT_TRUE(bench.state.lineBusy);
        observer.showBytes(300, 1000);
        auto* const progress = bench.window->findChild<QProgressDialog*>(QStringLiteral("TransferProgress"));
        ASSERT_NE(progress, nullptr);
        EXPECT_EQ(progress->value(), 300);
        EXPECT_EQ(progress->labelText().toStdString(), "KarvoUpd.zip wird heruntergeladen");
        EXPECT_FALSE(observer.stopRequested());
        progress->cancel();
        EXPECT_TRUE(observer.stopRequested());
    };
    bench.item("mnu_download").trigger();
    EXPECT_TRUE(bench.downloader.target.generic_string().ends_with("/C/temp/KarvoUpd.zip"));
    bench.downloader.during = {};
    bench.downloader.end = DownloadEnd::complete;
    const auto file = bench.scratch.path() / "C/temp/KarvoUpd.zip";
    const auto done = QStringLiteral("Download erfolgreich ausgeführt!\r\nDie Datei liegt hier: ") +
                      QString::fromStdString(file.string());
    bench.driver.expect(QStringLiteral("done"), [&](QWidget& box) {
        QTest::qWait(450); // a progress window that was to come up later does not
        EXPECT_EQ(QApplication::activeModalWidget(), &box);
        EXPECT_EQ(dynamic_cast<QMessageBox&>(box).text().toStdString(), done.toStdString());
        box.close();
    });
    bench.item("mnu_download").trigger();
    EXPECT_FALSE(bench.state.lineBusy);

    bench.scratch.write("C/temp/KarvoUpd.zip", "");
    bench.archive.entries = {{{"a.txt", ArchiveEntry::Kind::file, false}, {"new"}}};
    bench.driver.expectBox(done, QStringLiteral("Entpacken"));
    bench.driver.expect(QStringLiteral("Unzip_Dialog"), [](QWidget& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("OKButton"))->click();
    });
    bench.driver.expect(QStringLiteral("unpacked"), [](QWidget& box) { box.close(); });
    bench.item("mnu_download").trigger();
    EXPECT_EQ(bench.archive.read_, file);
    EXPECT_EQ(bench.scratch.read("C/temp/Zip_Ordner/a.txt"), "new");
}

} // namespace karvo::test
