#include "link/read.h"
#include "support/case_table.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <sstream>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::blockOf;
using test::bytesOf;
using test::joined;
using test::Piece;
using test::tailOf;
using enum ReadEnd;

// The full read, and the one with which a write begins.
enum class Kind { full, forSave };
using enum Kind;

struct ReadBench : test::LinkBench {
    Kind kind;
    CvImage image{};

    explicit ReadBench(Kind ofRead) : kind(ofRead) { image.fill(99); }

    ReadEnd readIt()
    {
        ReceiverValues receiver;
        return kind == full ? readDecoder(link, image, receiver) : readForSave(link, image);
    }
    void answer(const char* presence, const std::vector<Piece>& block)
    {
        if (*presence != 0)
            line.replyWith(bytesOf(presence));
        if (!block.empty())
            line.replyInPieces(block);
    }
};

std::vector<Piece> at(std::chrono::milliseconds time, const Bytes& bytes)
{
    return {{time, bytes}};
}

TEST(ReadTest, TakesTheWholeBlockAndNothingBehindIt)
{
    // The full read gives the long block ten seconds; the other one never does, and takes the type as it is.
    const std::tuple<Kind, std::size_t, std::chrono::milliseconds, TypeCode> cases[] = {
        {full, 512, 4900ms, TypeCode::kv05},
        {full, 1024, 9900ms, TypeCode::kv08},
        {forSave, 512, 4900ms, TypeCode::kv05},
        {forSave, 1024, 4900ms, TypeCode::kv07}};
    for (const auto& [kind, length, time, typeCode] : cases) {
        ReadBench bench(kind);
        bench.state.typeCode = length == 512 ? TypeCode::kv05 : TypeCode::kv07;
        const Bytes block = blockOf(length);
        bench.answer(length == 512 ? "15" : "28", at(time, block));
        EXPECT_EQ(bench.readIt(), read);
        EXPECT_EQ(joined(bench.journal),
                  std::string(kind == full ? "status read all, " : "") +
                      "open 1, hourglass, write 37, hourglass, write 69 82, no hourglass");
        EXPECT_TRUE(std::equal(block.begin(), block.end() - 1, bench.image.begin() + 1));
        const std::array<std::uint8_t, 4> around = {bench.image[0], bench.image[length + 1],
                                                    bench.image[1030], bench.image[1031]};
        const std::uint8_t behind = kind == full ? 99 : 0;
        EXPECT_EQ(around, (std::array<std::uint8_t, 4>{99, behind, behind, 99}));
        EXPECT_EQ(bench.state.typeCode, typeCode);
        EXPECT_EQ(bench.state.timeOutInterval, 5000ms);
        EXPECT_TRUE(bench.line.isOpen());
    }
}

TEST(ReadTest, AFaultIsToldAndLeavesTheImageAloneAndTheNextReadWorks)
{
    const std::array<std::string, 5> ends = {"read", "noReply", "unknownDecoder", "wrongCheckByte", "ended"};
    for (const auto& [kind, typeCode, presence, block, end, ending, passed] :
         test::casesOf<7>("link/read_faults.txt")) {
        ReadBench bench(kind == "full" ? full : forSave);
        const CvImage before = bench.image;
        bench.state.typeCode = TypeCode{std::stoi(typeCode)};
        std::istringstream fields(block);
        std::size_t length = 0;
        std::string state;
        std::vector<Piece> pieces;
        if (int time = 0; fields >> time >> length >> state) {
            pieces =
                at(time * 1ms, state == "sound" || state == "wrong" ? blockOf(length - 1) : Bytes(length, 1));
            if (state == "wrong")
                pieces[0].bytes.back() ^= 1;
            if (state == "hangup")
                pieces.push_back({(time + 100) * 1ms, {}});
        }
        bench.answer(presence.c_str(), pieces);
        EXPECT_EQ(ends.at(static_cast<std::size_t>(bench.readIt())), end);
        EXPECT_EQ(bench.line.now(), std::stoi(ending) * 1ms);
        EXPECT_EQ(tailOf(bench.journal, passed), passed);
        EXPECT_EQ(bench.image, before);
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_EQ(bench.state.timeOutInterval, 5000ms);
        EXPECT_EQ(bench.line.isOpen(), state != "hangup" && !presence.empty());
        bench.state.typeCode = TypeCode::kv05;
        bench.answer("15", at(0ms, blockOf(512)));
        EXPECT_EQ(bench.readIt(), read);
    }
}

TEST(ReadTest, ClosingTheProgramOrARefusedPortSendsNoMoreAndKeepsTheImage)
{
    for (const Kind kind : {full, forSave}) {
        for (const bool refused : {false, true}) {
            ReadBench bench(kind);
            const CvImage before = bench.image;
            if (refused)
                bench.line.refuseToOpen({u"no such device", {}});
            bench.line.endWhenSilent();
            EXPECT_EQ(bench.readIt(), ended);
            EXPECT_EQ(joined(bench.journal), std::string(kind == full ? "status read all, " : "") +
                                                 (refused ? "message no such device, end program"
                                                          : "open 1, hourglass, write 37, no hourglass"));
            EXPECT_EQ(bench.image, before);
        }
    }
}

TEST(ReadTest, AStopEndsItSilentlyAndTheNextReadDoesNotMeetTheRest)
{
    const std::pair<Kind, int> cases[] = {{full, 1}, {full, 3}, {forSave, 1}, {forSave, 3}};
    for (const auto& [kind, wait] : cases) { // stopped within "%", and within the block
        ReadBench bench(kind);
        test::setCaption(bench.texts, 150, u"stopped");
        bool stop = false;
        bench.link.stopRequested = &stop;
        bench.state.typeCode = TypeCode::kv07;
        int waits = 0;
        bench.line.onWait([&stop, &waits, last = wait] { stop = stop || ++waits == last; });
        const Bytes block = blockOf(1024);
        const auto half = block.begin() + 600;
        bench.answer(wait == 3 ? "27" : "", {{50ms, {block.begin(), half}}, {120ms, {half, block.end()}}});
        EXPECT_EQ(bench.readIt(), ended);
        EXPECT_FALSE(bench.line.isOpen());
        EXPECT_EQ(bench.image[1], 99);
        EXPECT_EQ(bench.line.now(), 0ms) << "at once";
        EXPECT_EQ(bench.journal.back(), "status stopped");
        stop = false;
        bench.answer("27", at(0ms, block));
        EXPECT_EQ(bench.readIt(), read) << wait;
    }
}

TEST(ReadTest, AReceiversSingleValuesComeFromItsBlock)
{
    CvImage image{};
    for (const auto& [cv, value] :
         {std::pair{72, 2}, {73, 9}, {74, 11}, {77, 12}, {78, 13}, {80, 14}, {478, 15}, {479, 16}})
        image[static_cast<std::size_t>(cv)] = static_cast<std::uint8_t>(value);
    for (const bool isReceiver : {false, true}) {
        const auto [version, level, cv478, cv74, cv77, cv78, cv80] =
            receiverValuesOf(isReceiver ? TypeCode::receiver : TypeCode::trailer, image);
        EXPECT_EQ((std::vector{version, level, cv74, cv77, cv78, cv80, cv478}),
                  isReceiver ? (std::vector{9, 2, 11, 12, 13, 14, 15}) : (std::vector{0, 3, 0, 0, 0, 0, 0}));
    }
    for (const Bytes& noBlock : {Bytes(), Bytes(1200, 0)})
        EXPECT_FALSE(takeBlock(noBlock, image));
}

} // namespace
} // namespace karvo
