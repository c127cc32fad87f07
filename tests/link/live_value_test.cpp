#include "link/live_value.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::Journal;
using test::LinkBench;

struct LiveBench : LinkBench {
    LiveBench() { test::setText(texts, 294, u"m294"); }

    // The replies to "%", to "EWM" and to the packet.
    LiveEnd send(LiveValue value, const std::vector<Bytes>& replies)
    {
        for (const Bytes& reply : replies)
            line.replyWith(reply);
        return sendLiveValue(link, value, ClosedPort::opened);
    }
};

const Bytes kv07 = {'2', '7'};

} // namespace

TEST(LiveValue, ThreeExchangesInTheirOrder)
{
    struct Case {
        LiveValue value;
        const char* packet;
    };
    const Case cases[] = {{{2, 255}, "write 2 255 1"}, {{3, 254}, "write 3 254 1"}, {{1, 0}, "write 1 0 1"}};
    for (const Case& expected : cases) {
        LiveBench bench;
        EXPECT_EQ(bench.send(expected.value, {kv07, {6}, {6, 9}}), LiveEnd::sent);
        EXPECT_EQ(bench.journal, (Journal{"open 1", "write 37", "write 69 87 77", expected.packet}));
        EXPECT_EQ(bench.state.lastReply, (Bytes{6, 9}));
        EXPECT_EQ(bench.state.typeCode, 7);
        EXPECT_TRUE(bench.line.isOpen());
    }
}

TEST(LiveValue, KnowsTheDecodersThatTakeIt)
{
    struct Case {
        const char* reply;
        std::optional<int> typeCode;
    };
    const Case cases[] = {{"04", 0}, {"14", 0}, {"15", 1},  {"16", 2},  {"24", 4},  {"25", 5},  {"26", 6},
                          {"27", 7}, {"28", 8}, {"80", 80}, {"81", {}}, {"A7", {}}, {"99", {}}, {"270", {}}};
    for (const Case& expected : cases) {
        LiveBench bench;
        bench.state.typeCode = 33;
        const std::string reply = expected.reply;
        const auto end = bench.send({2, 5}, {Bytes(reply.begin(), reply.end()), {6}, {6}});
        EXPECT_EQ(end, expected.typeCode ? LiveEnd::sent : LiveEnd::unknownDecoder) << reply;
        EXPECT_EQ(bench.state.typeCode, expected.typeCode.value_or(33)) << reply;
        EXPECT_EQ(bench.journal.size(), expected.typeCode ? 4U : 2U) << reply << ": nothing behind the '%'";
    }
}

TEST(LiveValue, AFailureEndsTheExchangeAndIsTold)
{
    struct Case {
        std::vector<Bytes> replies;
        LiveEnd end;
        Journal journal;
    };
    const Case cases[] = {
        {{}, LiveEnd::noReply, {"open 1", "write 37", "message no reply\r\nnothing came"}},
        {{{'2'}}, LiveEnd::noReply, {"open 1", "write 37", "message no reply\r\n1 of 2 bytes"}},
        {{kv07},
         LiveEnd::noReply,
         {"open 1", "write 37", "write 69 87 77", "message no reply\r\nnothing came"}},
        {{kv07, {7, 6}}, LiveEnd::refused, {"open 1", "write 37", "write 69 87 77", "message m294"}},
        {{kv07, {6}},
         LiveEnd::noReply,
         {"open 1", "write 37", "write 69 87 77", "write 2 5 7", "message no reply\r\nnothing came"}},
        {{kv07, {6}, {21}}, LiveEnd::sent, {"open 1", "write 37", "write 69 87 77", "write 2 5 7"}},
    };
    for (const Case& expected : cases) {
        LiveBench bench;
        EXPECT_EQ(bench.send({2, 5}, expected.replies), expected.end);
        EXPECT_EQ(bench.journal, expected.journal);
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_TRUE(bench.line.isOpen());
    }
}

} // namespace karvo
