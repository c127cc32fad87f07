#include "shell/window_bench.h"
#include "support/scratch_folder.h"

#include <QFileDialog>
#include <QProgressDialog>

namespace karvo::test
{

struct DownloadWindowBench : WindowBench {
    explicit DownloadWindowBench(const BenchSetup& setup = {}) : WindowBench(setup)
    {
        state.driveC = scratch.path() / "C";
        std::filesystem::current_path(scratch.path());
        scratch.write("C/TEMP/Zip_Ordner/a.txt", "old");
        scratch.write("Update.zip", "");
        archive.entries = {{{"a.txt", ArchiveEntry::Kind::file, false}, {"new"}}};
    }
    // The file dialog, answered with a name.
    void chooseFile(const char* name)
    {
        driver.expect(QStringLiteral("file dialog"), [name](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            auto& line = test::find<QLineEdit>(dialog, "fileNameEdit");
            EXPECT_EQ(line.text().toStdString(), "*.zip");
            if (name == nullptr) {
                dialog.reject();
                return;
            }
            line.setText(QString::fromLatin1(name));
            QTest::keyClick(&line, Qt::Key_Return);
        });
    }
    ScratchFolder scratch;
};

TEST(UnzipDialog, UnpacksTheChosenArchive)
{
    DownloadWindowBench bench({.language = LanguageCode::english});
    bench.chooseFile("Update.zip");
    bench.expect("Unzip_Dialog", [&](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName().toStdString(), "Unzip_Dialog");
        EXPECT_TRUE(fieldOf(dialog, "Zip_File").ends_with("Update.zip"));
        EXPECT_EQ(fieldOf(dialog, "Zip_Ordner"), "C:\\TEMP\\Zip_Ordner");
        click(dialog, "OKButton");
    });
    bench.expectBoxWith("Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner\r\n" +
                        (bench.scratch.path() / "C/TEMP/Zip_Ordner").string());
    bench.choose("mnu_unzip");
    EXPECT_EQ(bench.scratch.read("C/TEMP/Zip_Ordner/a.txt"), "new");
    EXPECT_FALSE(bench.state.lineBusy);
}

TEST(UnzipDialog, NothingIsUnpackedWithoutAnArchiveOrConsent)
{
    DownloadWindowBench bench;
    bench.chooseFile(nullptr);
    bench.expectBox(Message::noFileChosen);
    bench.choose("mnu_unzip");
    bench.chooseFile("Update.zip");
    bench.expect("Unzip_Dialog");
    bench.choose("mnu_unzip");
    EXPECT_TRUE(bench.archive.read_.empty());
    EXPECT_EQ(bench.scratch.read("C/TEMP/Zip_Ordner/a.txt"), "old");
}

TEST(UnzipDialog, AFaultIsToldUnderItsTitle)
{
    DownloadWindowBench bench;
    bench.archive.fault = u"bad sum";
    bench.chooseFile("Update.zip");
    bench.expect("Unzip_Dialog", clicking("OKButton"));
    bench.expect("fault", [](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.windowTitle().toStdString(), "error");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_TRUE(box.text().contains(QStringLiteral("(bad sum)"))) << box.text().toStdString();
        box.close();
    });
    bench.choose("mnu_unzip");
    EXPECT_EQ(bench.scratch.read("C/TEMP/Zip_Ordner/a.txt"), "old");
}

TEST(DownloadWindow, ShowsHowFarItIsStopsWhenCancelledAndOffersToUnpack)
{
    DownloadWindowBench bench;
    bench.downloader.end = DownloadEnd::cancelled;
    bench.downloader.during = [&](DownloadObserver& observer) {
        EXPECT_TRUE(bench.state.lineBusy);
        observer.showBytes(300, 1000);
        auto& progress = bench.find<QProgressDialog>("TransferProgress");
        EXPECT_EQ(progress.value(), 300);
        EXPECT_EQ(progress.labelText().toStdString(), "KarvoUpd.zip wird heruntergeladen");
        EXPECT_FALSE(observer.stopRequested());
        progress.cancel();
        EXPECT_TRUE(observer.stopRequested());
    };
    bench.choose("mnu_download");
    EXPECT_TRUE(bench.downloader.target.generic_string().ends_with("/C/temp/KarvoUpd.zip"));

    bench.downloader.during = {};
    bench.downloader.end = DownloadEnd::complete;
    const auto file = bench.scratch.path() / "C/temp/KarvoUpd.zip";
    const std::string done = "Download erfolgreich ausgeführt!\r\nDie Datei liegt hier: " + file.string();
    bench.expect("done", [&](QWidget& box) {
        QTest::qWait(450); // a progress window that was to come up later does not
        EXPECT_EQ(QApplication::activeModalWidget(), &box);
        box.close();
    });
    bench.choose("mnu_download");
    EXPECT_FALSE(bench.state.lineBusy);

    bench.scratch.write("C/temp/KarvoUpd.zip", "");
    bench.driver.expectBox(QString::fromStdString(done), QStringLiteral("Entpacken"));
    bench.expect("Unzip_Dialog", clicking("OKButton"));
    bench.expect("unpacked");
    bench.choose("mnu_download");
    EXPECT_EQ(bench.archive.read_, file);
    EXPECT_EQ(bench.scratch.read("C/temp/Zip_Ordner/a.txt"), "new");
}

} // namespace karvo::test
