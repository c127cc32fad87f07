#include "firmware/download.h"

#include "support/scripted_archive.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;

class Nobody : public DownloadObserver
{
public:
    void showBytes(long long, long long) override {}
    bool stopRequested() override { return false; }
};

struct DownloadBench : test::TestBench {
    explicit DownloadBench(TextView address = u"http://host/KarvoUpd.zip")
    {
        state.driveC = "c";
        test::setText(state.texts, 581, address);
        test::setText(state.texts, 867, u"m867");
    }
    void run()
    {
        Nobody nobody;
        done = download(bench, server, nobody);
        if (done && done->end == DownloadEnd::failed)
            tellDownloadFailed(bench);
    }
    test::ScriptedDownloader server;
    std::optional<Downloaded> done;
};

} // namespace

TEST(Download, ItsLastTwelveCharactersNameTheFile)
{
    EXPECT_EQ(downloadFileName(u"http://host/KarvoUpd.zip"), u"KarvoUpd.zip");
    EXPECT_EQ(downloadFileName(u"KarvoUpd.zip"), u"KarvoUpd.zip");
    for (const TextView address : {u"", u"arvoUpd.zip", u"http://host/arvoUpd.zip",
                                   u"http://host/Kar?oUpd.zip", u"http://host/CON.karvoup"})
        EXPECT_FALSE(downloadFileName(address)) << utf8FromText(address);
}

TEST(Download, IntoTheFixedFolderUnderTheHourglass)
{
    DownloadBench bench;
    bench.files.folders = {"c", "c/TEMP"};
    bench.run();
    EXPECT_EQ(bench.server.address, u"http://host/KarvoUpd.zip");
    EXPECT_EQ(bench.server.target, "c/TEMP/KarvoUpd.zip");
    EXPECT_EQ(bench.journal, (Journal{"hourglass", "no hourglass"}));
    test::setCaption(bench.state.texts, 677, u"here: {1}");
    EXPECT_EQ(utf8FromText(downloadedText(bench.state.texts, bench.done->file)),
              "Download erfolgreich ausgeführt!\r\nhere: c/TEMP/KarvoUpd.zip");
}

TEST(Download, SaysHowItWent)
{
    struct Case {
        DownloadEnd end;
        Journal journal;
    };
    const Case cases[] = {
        {DownloadEnd::failed,
         {"hourglass", "no hourglass",
          "message Fehler beim Download: Entweder existiert die URL nicht, oder Sie haben einen "
          "ungültigen Dateinamen angegeben!"}},
        {DownloadEnd::cancelled, {"hourglass", "no hourglass"}},
        {DownloadEnd::ended, {"hourglass", "no hourglass"}}};
    for (const Case& expected : cases) {
        DownloadBench bench;
        bench.server.end = expected.end;
        bench.run();
        EXPECT_EQ(bench.journal, expected.journal);
        EXPECT_TRUE(bench.files.exists("c/temp"));
    }
    DownloadBench bench(u"http://x");
    bench.run();
    EXPECT_EQ(bench.journal, (Journal{"message m867"}));
    EXPECT_TRUE(bench.server.address.empty());
}

} // namespace karvo
