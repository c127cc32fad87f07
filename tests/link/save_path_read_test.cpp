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

class SavePathReadTest : public testing::Test
{
protected:
    SavePathReadTest()
    {
        image.fill(99);
        before = image;
    }
    ReadEnd read(int typeCode)
    {
        bench.state.typeCode = typeCode;
        bench.state.identification = u"xy";
        return readForSave(bench.link, image);
    }

    LinkBench bench;
    CvImage image{};
    CvImage before{};
};

TEST_F(SavePathReadTest, AnyReplyIsPresenceAndTheTypeStays)
{
    bench.line.replyWith({'?'});
    bench.line.replyWith(blockOf(512));
    EXPECT_EQ(read(1), ReadEnd::read);
    EXPECT_EQ(bench.journal,
              (Journal{"open 1", "hourglass", "write 37", "hourglass", "write 69 82", "no hourglass"}));
    EXPECT_EQ(bench.state.typeCode, 1);
    EXPECT_EQ(bench.state.identification, u"xy");
}

TEST_F(SavePathReadTest, ZeroesOneTo1030BeforeTheBlock)
{
    bench.line.replyWith({'1', '5'});
    bench.line.replyWith(blockOf(512));
    EXPECT_EQ(read(1), ReadEnd::read);
    EXPECT_EQ(image[0], 99);
    EXPECT_EQ(image[1], 7);
    EXPECT_EQ(image[512], (512 * 7 + 2) & 0xFF);
    EXPECT_EQ(image[513], 0);
    EXPECT_EQ(image[1030], 0);
    EXPECT_EQ(image[1031], 99);
}

TEST_F(SavePathReadTest, TheLongBlockHasFiveSecondsOnly)
{
    bench.line.replyWith({'2', '7'});
    bench.line.replyInPieces({{4900ms, blockOf(1024)}});
    EXPECT_EQ(read(7), ReadEnd::read);
    bench.line.replyWith({'2', '7'});
    bench.line.replyInPieces({{5100ms, blockOf(1024)}});
    before = image;
    const auto start = bench.line.now();
    EXPECT_EQ(read(8), ReadEnd::noReply);
    EXPECT_EQ(bench.line.now() - start, 5000ms);
    EXPECT_EQ(image, before);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end, (Journal{"message no reply\r\nnothing came", "status no reply status", "no hourglass"}));
    EXPECT_TRUE(bench.line.isOpen());
}

TEST_F(SavePathReadTest, SilenceClosesThePortBeforeItIsTold)
{
    EXPECT_EQ(read(1), ReadEnd::noReply);
    EXPECT_EQ(bench.journal, (Journal{"open 1", "hourglass", "write 37", "close", "no hourglass",
                                      "message no reply\r\nnothing came", "status no reply status"}));
    EXPECT_EQ(image, before);
}

TEST_F(SavePathReadTest, AWrongCheckByteUndoesTheZeroing)
{
    Bytes block = blockOf(512);
    block.back() ^= 1;
    bench.line.replyWith({'1', '5'});
    bench.line.replyWith(block);
    EXPECT_EQ(read(1), ReadEnd::wrongCheckByte);
    EXPECT_EQ(image, before);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end, (Journal{"message wrong check byte", "status read all", "no hourglass"}));
}

TEST_F(SavePathReadTest, TheEndOfTheProgramUndoesTheZeroingToo)
{
    bench.line.endDuringNextWait();
    EXPECT_EQ(read(1), ReadEnd::ended);
    EXPECT_EQ(image, before);
    LinkBench refused;
    refused.line.refuseToOpen({u"no such device", {}});
    EXPECT_EQ(readForSave(refused.link, image), ReadEnd::ended);
    EXPECT_EQ(image, before);
}

} // namespace
} // namespace karvo
