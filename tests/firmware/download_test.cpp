#include "firmware/download.h"

#include "support/scripted_archive.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

struct DownloadBench : test::TestBench, DownloadObserver {
    explicit DownloadBench(TextView address = u"http://host/KarvoUpd.zip")
    {
        state.driveC = "c";
        test::numberEveryText(state.texts);
        test::setText(state.texts, 581, address);
    }
    void showBytes(long long, long long) override {}
    bool stopRequested() override { return false; }
    std::optional<Downloaded> run()
    {
        auto done = download(bench, server, *this);
        if (done && done->end == DownloadEnd::failed)
            tellDownloadFailed(bench);
        return done;
    }
    test::ScriptedDownloader server;
};

TEST(Download, ItsLastTwelveCharactersNameTheFile)
{
    EXPECT_EQ(downloadFileName(u"http://host/KarvoUpd.zip"), u"KarvoUpd.zip");
    EXPECT_EQ(downloadFileName(u"KarvoUpd.zip"), u"KarvoUpd.zip");
    for (const TextView address : {u"", u"arvoUpd.zip", u"http://host/arvoUpd.zip",
                                   u"http://host/Kar?oUpd.zip", u"http://host/CON.karvoup"})
        EXPECT_FALSE(downloadFileName(address)) << utf8FromText(address);
}

TEST(Download, GoesIntoTheFixedFolderUnderTheHourglass)
{
    DownloadBench bench;
    bench.files.folders = {"c", "c/TEMP"};
    const auto done = bench.run();
    EXPECT_EQ(bench.server.address, u"http://host/KarvoUpd.zip");
    EXPECT_EQ(bench.server.target, "c/TEMP/KarvoUpd.zip");
    EXPECT_EQ(test::joined(bench.journal), "hourglass, no hourglass");
    test::setCaption(bench.state.texts, 677, u"here: {1}");
    EXPECT_EQ(utf8FromText(downloadedText(bench.state.texts, done->file)),
              "Download erfolgreich ausgeführt!\r\nhere: c/TEMP/KarvoUpd.zip");
}

TEST(Download, SaysHowItWent)
{
    const char* const failure = "message Fehler beim Download: Entweder existiert die URL nicht, oder Sie "
                                "haben einen ungültigen Dateinamen angegeben!";
    for (const auto end : {DownloadEnd::failed, DownloadEnd::cancelled, DownloadEnd::ended}) {
        DownloadBench bench;
        bench.server.end = end;
        bench.run();
        EXPECT_EQ(bench.journal.back(), end == DownloadEnd::failed ? failure : "no hourglass");
        EXPECT_TRUE(bench.files.exists("c/temp"));
    }
    DownloadBench bench(u"http://x");
    bench.run();
    EXPECT_EQ(test::joined(bench.journal), "message m867");
    EXPECT_TRUE(bench.server.address.empty());
}

} // namespace
} // namespace karvo
