#include "link/series_write.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::Journal;
using test::LinkBench;

class SeriesWriteTest : public testing::Test
{
protected:
    SeriesWriteTest() { test::addWriteTexts(bench.texts); }

    void answerAll(const Bytes& frameReply = {6})
    {
        bench.line.replyWith({'2', '7'});
        bench.line.replyWith({6});
        bench.line.replyWith(frameReply);
    }
    std::array<WriteEnd, 5> write() { return writeSeries(bench.link, {10, 20, 30, 40, 50}, {}); }

    LinkBench bench;
};

TEST_F(SeriesWriteTest, FiveCvsInOrderEachWithItsStatusAndAPause)
{
    bench.state.noticeAfterWrite = true; // without effect during a series
    bench.view.showStatus(u"ready");
    for (int i = 0; i < 5; ++i)
        answerAll();
    const std::array<WriteEnd, 5> allWritten = {WriteEnd::written, WriteEnd::written, WriteEnd::written,
                                                WriteEnd::written, WriteEnd::written};
    EXPECT_EQ(write(), allWritten);
    EXPECT_EQ(bench.line.now(), 500ms);
    const Journal first(bench.journal.begin(), bench.journal.begin() + 8);
    EXPECT_EQ(first, (Journal{"status ready", "status ready 167 ", "status writing CV167", "open 1",
                              "write 37", "write 69 87 83", "write 166 10 176", "status c873"}));
    const Journal last(bench.journal.end() - 6, bench.journal.end());
    EXPECT_EQ(last, (Journal{"status c873 171 ", "status writing CV171", "write 37", "write 69 87 83",
                             "write 170 50 220", "status c873"}));
    EXPECT_FALSE(bench.state.seriesUnderWay);
}

TEST_F(SeriesWriteTest, AFailureIsShownAndTheNextCvFollows)
{
    answerAll();
    answerAll({21});
    bench.line.replyWith({'9', '9'});
    bench.line.replyInPieces({});
    answerAll();
    const std::array<WriteEnd, 5> expected = {WriteEnd::written, WriteEnd::frameRefused,
                                              WriteEnd::unknownDecoder, WriteEnd::noReply, WriteEnd::written};
    EXPECT_EQ(write(), expected);
    EXPECT_EQ(std::count(bench.journal.begin(), bench.journal.end(), "message m83\r\nCV 168 m94"), 1);
    EXPECT_FALSE(bench.state.seriesUnderWay);
}

TEST_F(SeriesWriteTest, TheAdapterPulledBetweenTwoCvsEndsTheProgram)
{
    answerAll();
    bench.line.replyWith({'2', '7'});
    bench.line.replyWith({6});
    bench.line.replyInPieces({{0ms, {6}}, {50ms, {}}}); // in the pause
    bench.line.refuseToOpenAgain({u"no such device", {}});
    const std::array<WriteEnd, 5> expected = {WriteEnd::written, WriteEnd::written, WriteEnd::ended,
                                              WriteEnd::ended, WriteEnd::ended};
    EXPECT_EQ(write(), expected);
    const Journal end(bench.journal.end() - 2, bench.journal.end());
    EXPECT_EQ(end, (Journal{"message no such device", "end program"}));
    EXPECT_FALSE(bench.state.seriesUnderWay);
}

TEST_F(SeriesWriteTest, TheAdapterPulledAndPluggedInAgainGoesOn)
{
    answerAll();
    bench.line.replyWith({'2', '7'});
    bench.line.replyWith({6});
    bench.line.replyInPieces({{0ms, {6}}, {50ms, {}}});
    for (int i = 0; i < 3; ++i)
        answerAll();
    for (const WriteEnd end : write())
        EXPECT_EQ(end, WriteEnd::written);
    EXPECT_EQ(std::count(bench.journal.begin(), bench.journal.end(), "open 1"), 2);
}

TEST_F(SeriesWriteTest, ClosingTheProgramStopsIt)
{
    bench.line.endDuringNextWait();
    for (const WriteEnd end : write())
        EXPECT_EQ(end, WriteEnd::ended);
    EXPECT_EQ(bench.journal.back(), "write 37");
    EXPECT_FALSE(bench.state.seriesUnderWay);
}

} // namespace
} // namespace karvo
