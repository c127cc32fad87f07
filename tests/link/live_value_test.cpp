#include "link/live_value.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{

using test::bytesOf;
using test::Journal;

TEST(LiveValueTest, ThreeExchangesInTheirOrderOrAFaultThatIsTold)
{
    const Bytes kv07 = bytesOf("27");
    const Bytes ack = {6};
    const Journal sent = {"write 37", "write 69 87 77", "write 2 5 7"};
    const char* const silent = "message no reply\r\nnothing came";
    // The replies to "%", to "EWM" and to the packet; the end, the exchanges and what is told.
    const std::tuple<std::vector<Bytes>, LiveEnd, int, Journal> cases[] = {
        {{kv07, ack, {6, 9}}, LiveEnd::sent, 3, {}},
        {{kv07, ack, {21}}, LiveEnd::sent, 3, {}},
        {{kv07, ack}, LiveEnd::noReply, 3, {silent}},
        {{kv07, {7, 6}}, LiveEnd::refused, 2, {"message m294"}},
        {{kv07}, LiveEnd::noReply, 2, {silent}},
        {{}, LiveEnd::noReply, 1, {silent}},
        {{{'2'}}, LiveEnd::noReply, 1, {"message no reply\r\n1 of 2 bytes"}},
        {{bytesOf("81"), ack}, LiveEnd::unknownDecoder, 1, {}},
        {{bytesOf("A7"), ack}, LiveEnd::unknownDecoder, 1, {}},
        {{bytesOf("270"), ack}, LiveEnd::unknownDecoder, 1, {}},
    };
    for (const auto& [replies, end, exchanges, told] : cases) {
        test::LinkBench bench;
        test::setText(bench.texts, 294, u"m294");
        bench.state.typeCode = 33;
        for (const Bytes& reply : replies)
            bench.line.replyWith(reply);
        EXPECT_EQ(sendLiveValue(bench.link, {2, 5}, ClosedPort::opened), end);
        Journal expected = {"open 1"};
        expected.insert(expected.end(), sent.begin(), sent.begin() + exchanges);
        expected.insert(expected.end(), told.begin(), told.end());
        EXPECT_EQ(bench.journal, expected);
        EXPECT_EQ(bench.state.typeCode, exchanges > 1 ? 7 : 33);
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_TRUE(bench.line.isOpen());
    }
}

TEST(LiveValueTest, TheSumOfThePacketIsModulo256AndAClosedPortStaysClosedUnlessAskedFor)
{
    test::LinkBench bench;
    EXPECT_EQ(sendLiveValue(bench.link, {2, 255}, ClosedPort::leftClosed), LiveEnd::lineLost);
    EXPECT_TRUE(bench.journal.empty());
    for (const Bytes& reply : {bytesOf("80"), Bytes{6}, Bytes{6, 9}})
        bench.line.replyWith(reply);
    EXPECT_EQ(sendLiveValue(bench.link, {2, 255}, ClosedPort::opened), LiveEnd::sent);
    EXPECT_EQ(bench.journal.back(), "write 2 255 1");
    EXPECT_EQ(bench.state.lastReply, (Bytes{6, 9}));
}

} // namespace karvo
