#include "link/read.h"
#include "link/save_path_read.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::blockOf;
using test::bytesOf;
using test::Piece;

// The full read, and the one with which a write begins.
enum class Kind { full, forSave };

struct ReadBench : test::LinkBench {
    CvImage image{};
    ReceiverValues receiver;

    ReadBench() { image.fill(99); }

    ReadEnd read(Kind kind)
    {
        return kind == Kind::full ? readDecoder(link, image, receiver) : readForSave(link, image);
    }
};

std::vector<Piece> at(std::chrono::milliseconds time, const Bytes& bytes)
{
    return {{time, bytes}};
}

Bytes wrongBlock()
{
    Bytes block = blockOf(512);
    block.back() ^= 1;
    return block;
}

class ReadTest : public testing::TestWithParam<Kind>
{
protected:
    ReadBench bench;
};

INSTANTIATE_TEST_SUITE_P(Kinds, ReadTest, testing::Values(Kind::full, Kind::forSave));

TEST_P(ReadTest, TakesTheWholeBlockAndNothingBehindIt)
{
    const bool full = GetParam() == Kind::full;
    for (const std::size_t length : {std::size_t{512}, std::size_t{1024}}) {
        ReadBench fresh;
        fresh.state.typeCode = length == 512 ? 1 : 7;
        fresh.line.replyWith(bytesOf(length == 512 ? "15" : "28"));
        // The full read gives the long block twice the time; the other one never does.
        fresh.line.replyInPieces(at(full && length == 1024 ? 9900ms : 4900ms, blockOf(length)));
        EXPECT_EQ(fresh.read(GetParam()), ReadEnd::read);
        EXPECT_EQ(test::joined(fresh.journal),
                  std::string(full ? "status read all, " : "") +
                      "open 1, hourglass, write 37, hourglass, write 69 82, no hourglass");
        const auto block = blockOf(length);
        EXPECT_TRUE(std::equal(block.begin(), block.end() - 1, fresh.image.begin() + 1));
        EXPECT_EQ(fresh.image[0], 99);
        EXPECT_EQ(fresh.image[length + 1], full ? 99 : 0);
        EXPECT_EQ(fresh.image[1030], full ? 99 : 0);
        EXPECT_EQ(fresh.image[1031], 99);
        EXPECT_EQ(fresh.state.typeCode, length == 512 ? 1 : full ? 8 : 7);
        EXPECT_EQ(fresh.state.timeOutInterval, 5000ms);
        EXPECT_TRUE(fresh.line.isOpen());
    }
}

TEST(ReadFaultTest, EndsWithItsWordsAndLeavesTheImageAloneAndTheNextReadWorks)
{
    using enum Kind;
    using enum ReadEnd;
    const auto silence = [](const std::string& came) {
        return "message no reply\r\n" + came + ", status no reply status";
    };
    const std::string silent = silence("nothing came");
    const std::string over = ", no hourglass";
    const std::string wrong = "write 69 82, message wrong check byte, status read all, no hourglass";
    const std::string unknown = "message unknown decoder\r\nreply \"99\", status read all, no hourglass";
    const std::vector<Piece> hangsUp = {{500ms, Bytes(100, 1)}, {600ms, {}}};
    const struct {
        Kind kind;
        int typeCode;
        const char* presence; // the reply to "%"
        std::vector<Piece> block;
        ReadEnd end;
        std::chrono::milliseconds time;
        std::string passed; // the end of the journal
    } cases[] = {
        {full, 0, "", {}, noReply, 5000ms, "write 37, " + silent + ", close, no hourglass"},
        // The hourglass goes before the box comes.
        {forSave, 0, "", {}, noReply, 5000ms, "write 37, close, no hourglass, " + silent},
        {full, 0, "99", {}, unknownDecoder, 0ms, unknown},
        {full, 0, "28", at(0ms, blockOf(512)), noReply, 10000ms, silence("513 of 1025 bytes") + over},
        {full, 0, "15", at(0ms, Bytes(413, 1)), noReply, 5000ms, silence("413 of 513 bytes") + over},
        {forSave, 8, "27", at(5100ms, blockOf(1024)), noReply, 5000ms, silent + over},
        {full, 0, "27", hangsUp, noReply, 600ms, silence("100 of 1025 bytes") + over},
        {full, 0, "16", at(0ms, wrongBlock()), wrongCheckByte, 0ms, wrong},
        {forSave, 1, "?", at(0ms, wrongBlock()), wrongCheckByte, 50ms, wrong}, // any reply is presence
    };
    for (const auto& expected : cases) {
        ReadBench bench;
        const CvImage before = bench.image;
        bench.state.typeCode = expected.typeCode;
        if (*expected.presence != 0)
            bench.line.replyWith(bytesOf(expected.presence));
        if (!expected.block.empty())
            bench.line.replyInPieces(expected.block);
        EXPECT_EQ(bench.read(expected.kind), expected.end);
        EXPECT_EQ(bench.line.now(), expected.time);
        EXPECT_EQ(test::tailOf(bench.journal, expected.passed), expected.passed);
        EXPECT_EQ(bench.image, before);
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_EQ(bench.state.timeOutInterval, 5000ms);
        EXPECT_EQ(bench.line.isOpen(), expected.time != 600ms && *expected.presence != 0);

        bench.state.typeCode = 1;
        bench.line.replyWith(bytesOf("15"));
        bench.line.replyWith(blockOf(512));
        EXPECT_EQ(bench.read(expected.kind), ReadEnd::read);
    }
}

TEST_P(ReadTest, ClosingTheProgramOrARefusedPortSendsNoMoreAndKeepsTheImage)
{
    const std::string first = GetParam() == Kind::full ? "status read all, " : "";
    const CvImage before = bench.image;
    bench.line.endDuringNextWait();
    EXPECT_EQ(bench.read(GetParam()), ReadEnd::ended);
    EXPECT_EQ(test::joined(bench.journal), first + "open 1, hourglass, write 37, no hourglass");
    EXPECT_EQ(bench.image, before);
    ReadBench refused;
    refused.line.refuseToOpen({u"no such device", {}});
    EXPECT_EQ(refused.read(GetParam()), ReadEnd::ended);
    EXPECT_EQ(test::joined(refused.journal), first + "message no such device, end program");
    EXPECT_EQ(refused.image, before);
}

TEST_P(ReadTest, AStopEndsItSilentlyAndTheNextReadDoesNotMeetTheRest)
{
    for (const int wait : {1, 3}) { // within "%", and within the block
        ReadBench stopped;
        test::setCaption(stopped.texts, 150, u"stopped");
        bool stop = false;
        stopped.link.stopRequested = &stop;
        stopped.state.typeCode = 7;
        int waits = 0;
        stopped.line.onWait([&] { stop = stop || ++waits == wait; });
        const Bytes block = blockOf(1024);
        if (wait == 3)
            stopped.line.replyWith(bytesOf("27"));
        stopped.line.replyInPieces(
            {{50ms, {block.begin(), block.begin() + 600}}, {120ms, {block.begin() + 600, block.end()}}});
        EXPECT_EQ(stopped.read(GetParam()), ReadEnd::ended);
        EXPECT_FALSE(stopped.line.isOpen());
        EXPECT_EQ(stopped.image[1], 99);
        EXPECT_EQ(stopped.line.now(), 0ms) << "at once";
        EXPECT_EQ(stopped.journal.back(), "status stopped");
        stop = false;
        stopped.line.replyWith(bytesOf("27"));
        stopped.line.replyWith(block);
        EXPECT_EQ(stopped.read(GetParam()), ReadEnd::read) << wait;
    }
}

TEST(ReceiverValuesTest, ComeFromTheBlockOfAReceiver)
{
    CvImage image{};
    const std::pair<std::size_t, std::uint8_t> values[] = {{72, 2},  {73, 9},  {74, 11},  {77, 12},
                                                           {78, 13}, {80, 14}, {478, 15}, {479, 16}};
    for (const auto& [cv, value] : values)
        image[cv] = value;
    const auto valuesOf = [&](int typeCode) {
        const auto of = receiverValuesOf(typeCode, image);
        return std::vector{
            of.firmwareVersion, of.firmwareLevel, of.cv74, of.cv77, of.cv78, of.cv80, of.cv478};
    };
    EXPECT_EQ(valuesOf(80), (std::vector{9, 2, 11, 12, 13, 14, 15}));
    EXPECT_EQ(valuesOf(57), (std::vector{0, 3, 0, 0, 0, 0, 0}));
}

TEST(TakeBlockTest, TheSumRunsOverAllDataAndABlockOfNoLengthIsRefused)
{
    Bytes block(1025, 0);
    block[0] = block[1023] = block[1024] = 255;
    block[511] = 1;
    CvImage image{};
    EXPECT_TRUE(takeBlock(block, image));
    EXPECT_EQ(image[1024], 255);
    EXPECT_EQ(image[1025], 0);
    block[1024] = 254;
    EXPECT_FALSE(takeBlock(block, image));
    EXPECT_FALSE(takeBlock({}, image));
    EXPECT_FALSE(takeBlock(Bytes(1200, 0), image));
}

} // namespace
} // namespace karvo
