#include "link/read.h"
#include "link/save_path_read.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::blockOf;
using test::Journal;
using test::LinkBench;

class ReadTest : public testing::Test
{
protected:
    ReadEnd read() { return readDecoder(bench.link, image, receiver); }

    LinkBench bench;
    CvImage image{};
    ReceiverValues receiver;
};

TEST_F(ReadTest, StepsOfAGoodReadInTheirOrder)
{
    bench.line.replyWith({'1', '5'});
    bench.line.replyWith(blockOf(512));
    EXPECT_EQ(read(), ReadEnd::read);
    EXPECT_EQ(bench.journal, (Journal{"status read all", "open 1", "hourglass", "write 37", "hourglass",
                                      "write 69 82", "no hourglass"}));
    EXPECT_EQ(image[1], 7);
    EXPECT_EQ(image[512], (512 * 7 + 2) & 0xFF);
    EXPECT_EQ(image[513], 0);
    EXPECT_EQ(bench.state.lastReply.size(), 513u);
    EXPECT_TRUE(bench.line.isOpen());
}

TEST_F(ReadTest, TheLongBlockHasTenSecondsAndTheNextCommandFiveAgain)
{
    bench.line.replyWith({'2', '7'});
    bench.line.replyInPieces({{9900ms, blockOf(1024)}});
    EXPECT_EQ(read(), ReadEnd::read);
    EXPECT_EQ(image[1024], (1024 * 7 + 4) & 0xFF);
    EXPECT_EQ(bench.state.timeOutInterval, 5000ms);
}

TEST_F(ReadTest, ALongBlockThatStopsAt513BytesTimesOut)
{
    bench.line.replyWith({'2', '8'});
    bench.line.replyWith(blockOf(512));
    EXPECT_EQ(read(), ReadEnd::noReply);
    EXPECT_EQ(bench.line.now(), 10000ms);
    EXPECT_EQ(bench.state.timeOutInterval, 5000ms);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end,
              (Journal{"message no reply\r\n513 of 1025 bytes", "status no reply status", "no hourglass"}));
    EXPECT_TRUE(bench.line.isOpen());
    EXPECT_EQ(image, CvImage{});
}

TEST_F(ReadTest, SilenceClosesThePortAndTheNextReadOpensItAgain)
{
    EXPECT_EQ(read(), ReadEnd::noReply);
    EXPECT_EQ(bench.line.now(), 5000ms);
    EXPECT_FALSE(bench.state.timeOut);
    EXPECT_EQ(bench.journal, (Journal{"status read all", "open 1", "hourglass", "write 37",
                                      "message no reply\r\nnothing came", "status no reply status", "close",
                                      "no hourglass"}));
    bench.line.replyWith({'1', '4'});
    bench.line.replyWith(blockOf(512));
    EXPECT_EQ(read(), ReadEnd::read);
}

TEST_F(ReadTest, AShortBlockThatStopsIsGivenUpAfterFiveSeconds)
{
    image[1] = 99;
    bench.line.replyWith({'1', '5'});
    bench.line.replyWith(Bytes(413, 1));
    EXPECT_EQ(read(), ReadEnd::noReply);
    EXPECT_EQ(bench.line.now(), 5000ms);
    EXPECT_EQ(image[1], 99);
    EXPECT_TRUE(bench.line.isOpen());
}

TEST_F(ReadTest, AnUnknownDecoderEndsTheReadWithItsStatus)
{
    bench.line.replyWith({'9', '9'});
    EXPECT_EQ(read(), ReadEnd::unknownDecoder);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end, (Journal{"message unknown decoder\r\nreply \"99\"", "status read all", "no hourglass"}));
    EXPECT_TRUE(bench.line.isOpen());
}

TEST_F(ReadTest, AWrongCheckByteLeavesTheImageAlone)
{
    image[1] = 99;
    Bytes block = blockOf(512);
    block.back() ^= 1;
    bench.line.replyWith({'1', '6'});
    bench.line.replyWith(block);
    EXPECT_EQ(read(), ReadEnd::wrongCheckByte);
    EXPECT_EQ(image[1], 99);
    EXPECT_EQ(image[2], 0);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end, (Journal{"message wrong check byte", "status read all", "no hourglass"}));
}

TEST_F(ReadTest, AHangUpInTheBlockIsATimeOutAndTheNextReadWorks)
{
    bench.line.replyWith({'2', '7'});
    bench.line.replyInPieces({{500ms, Bytes(100, 1)}, {600ms, {}}});
    EXPECT_EQ(read(), ReadEnd::noReply);
    EXPECT_EQ(bench.line.now(), 600ms);
    EXPECT_FALSE(bench.state.timeOut);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end,
              (Journal{"message no reply\r\n100 of 1025 bytes", "status no reply status", "no hourglass"}));
    bench.journal.clear();
    bench.line.replyWith({'2', '7'});
    bench.line.replyWith(blockOf(1024));
    EXPECT_EQ(read(), ReadEnd::read);
    EXPECT_EQ(bench.journal.at(1), "open 1") << "the port is opened anew";
}

TEST_F(ReadTest, ClosingTheProgramShowsNothing)
{
    bench.line.endDuringNextWait();
    EXPECT_EQ(read(), ReadEnd::ended);
    EXPECT_EQ(bench.journal, (Journal{"status read all", "open 1", "hourglass", "write 37", "no hourglass"}));
}

// Within "%" and within the block, of the full read and of the one before a write.
TEST_F(ReadTest, AStopEndsItSilentlyAndTheNextReadDoesNotMeetTheRest)
{
    for (const bool full : {true, false}) {
        for (const int wait : {1, 3}) { // the second is for the identification's second character
            LinkBench stopped;
            test::setCaption(stopped.texts, 150, u"stopped");
            bool stop = false;
            stopped.link.stopRequested = &stop;
            stopped.state.typeCode = 7;
            int waits = 0;
            stopped.line.onWait([&] { stop = stop || ++waits == wait; });
            const auto readIt = [&] {
                return full ? readDecoder(stopped.link, image, receiver) : readForSave(stopped.link, image);
            };
            const Bytes block = blockOf(1024);
            const Bytes rest(block.begin() + 600, block.end());
            if (wait == 3)
                stopped.line.replyWith({'2', '7'});
            stopped.line.replyInPieces({{50ms, {block.begin(), block.begin() + 600}}, {120ms, rest}});
            image.fill(9);
            EXPECT_EQ(readIt(), ReadEnd::ended);
            EXPECT_FALSE(stopped.line.isOpen());
            EXPECT_EQ(image[1], 9);
            EXPECT_EQ(stopped.line.now(), 0ms) << "at once";
            EXPECT_EQ(stopped.journal.back(), "status stopped");
            stop = false;
            stopped.line.replyWith({'2', '7'});
            stopped.line.replyWith(block);
            EXPECT_EQ(readIt(), ReadEnd::read) << full << wait;
        }
    }
}

TEST_F(ReadTest, APortThatCanNotBeOpenedSendsNothing)
{
    bench.line.refuseToOpen({u"No such device", {}});
    EXPECT_EQ(read(), ReadEnd::ended);
    EXPECT_EQ(bench.journal, (Journal{"status read all", "message No such device", "end program"}));
}

TEST_F(ReadTest, AReceiversSingleValuesComeFromTheBlock)
{
    Bytes block(513, 0);
    const std::pair<std::size_t, std::uint8_t> values[] = {{72, 2},  {73, 9},  {74, 11},  {77, 12},
                                                           {78, 13}, {80, 14}, {478, 15}, {479, 16}};
    for (const auto& [cv, value] : values) {
        block[cv - 1] = value;
        block.back() = static_cast<std::uint8_t>(block.back() + value);
    }
    bench.line.replyWith({'8', '0'});
    bench.line.replyWith(block);
    ASSERT_EQ(read(), ReadEnd::read);
    EXPECT_EQ(receiver.firmwareVersion, 9);
    EXPECT_EQ(receiver.firmwareLevel, 2);
    EXPECT_EQ(receiver.cv74, 11);
    EXPECT_EQ(receiver.cv77, 12);
    EXPECT_EQ(receiver.cv78, 13);
    EXPECT_EQ(receiver.cv80, 14);
    EXPECT_EQ(receiver.cv478, 15);
}

TEST(TakeBlockTest, TheSumOfTheLongBlockRunsOverAllItsData)
{
    Bytes block(1025, 0);
    block[0] = 255;
    block[1023] = 255;
    block[511] = 1;
    block[1024] = 0xFF;
    CvImage image{};
    EXPECT_TRUE(takeBlock(block, image));
    EXPECT_EQ(image[1024], 255);
    EXPECT_EQ(image[1025], 0);
    block[1024] = 0xFE;
    image[5] = 77;
    EXPECT_FALSE(takeBlock(block, image));
    EXPECT_EQ(image[5], 77);
    EXPECT_FALSE(takeBlock({}, image));
    EXPECT_FALSE(takeBlock(Bytes(1200, 0), image));
}

} // namespace
} // namespace karvo
