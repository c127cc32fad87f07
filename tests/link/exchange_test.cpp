#include "link/identification.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::bytesOf;
using test::joined;
using test::Journal;
using test::LinkBench;

TEST(EnsurePortOpenTest, ARefusedPortIsToldWithItsCauseAndEndsTheProgram)
{
    const std::tuple<PortError, bool, const char*> cases[] = {
        {{u"Gone", {}, PortFault::absent, u"/dev/tty0"}, false, "Gone\r\n\r\nCOM5 at /dev/tty0\r\nm673"},
        {{u"Busy", {}, PortFault::busy, u"COM5"}, true, "Busy\r\n\r\nCOM5\r\nm674"},
        {{u"No", u"dialout", PortFault::denied}, false, "No\r\n\r\nCOM5\r\nm675\r\njoin group dialout"},
        {{u"No", {}, PortFault::notSerial}, false, "No\r\n\r\nCOM5\r\nm676"},
        {{u"No", {}}, false, "No\r\n\r\nCOM5\r\nm677"},
    };
    for (const auto& [error, unsaved, text] : cases) {
        LinkBench bench;
        test::numberEveryText(bench.texts);
        test::setText(bench.texts, 660, u"join group {1}");
        test::setText(bench.texts, 671, u"{1} at {2}");
        test::setText(bench.texts, 672, u"{1}");
        bench.state.portNumber = 5;
        bench.link.unsavedWorkKept = unsaved;
        bench.line.refuseToOpen(error);
        EXPECT_FALSE(EnsurePortOpen(bench.link));
        EXPECT_EQ(joined(bench.journal), std::string("message ") + text + "\r\n\r\nm678" +
                                             (unsaved ? "\r\nm679" : "") + ", end program");
    }
}

class ExchangeTest : public testing::Test
{
protected:
    ExchangeTest()
    {
        bench.state.portNumber = 7;
        EnsurePortOpen(bench.link);
        EnsurePortOpen(bench.link);
        EXPECT_EQ(std::exchange(bench.journal, {}), Journal{"open 7"});
    }

    LinkBench bench;
};

TEST_F(ExchangeTest, AnAcknowledgeEndsAtItsFirstByteAndWhatWaitedBeforeTheCommandIsDropped)
{
    bench.line.addWaitingBytes({1, 2, 3});
    bench.line.replyInPieces({{10ms, {6}}, {12ms, {7}}});
    EXPECT_EQ(Exchange(bench.link, {'E', 'W', 'S'}, ReplyLength::atLeastOne()), ExchangeEnd::replied);
    EXPECT_EQ(bench.state.lastReply, Bytes{6});
    EXPECT_EQ(bench.line.now(), 10ms);
    EXPECT_EQ(bench.state.outgoingFrame, (Bytes{'E', 'W', 'S'}));
    EXPECT_EQ(bench.journal, Journal{"write 69 87 83"});
    EXPECT_TRUE(IsAck({6, 21}) && !IsAck({21, 6}) && !IsAck({}));
}

TEST_F(ExchangeTest, ABlockIsCollectedWholeAndItsProgressShown)
{
    bench.line.replyInPieces({{100ms, Bytes(200, 1)}, {300ms, Bytes(312, 255)}, {900ms, {9}}});
    EXPECT_EQ(Exchange(bench.link, {'E', 'R'}, ReplyLength::exactly(513), Pointer::hourglass),
              ExchangeEnd::replied);
    EXPECT_EQ(bench.state.lastReply.size(), 513u);
    EXPECT_EQ(bench.line.now(), 900ms);
    const std::vector<std::pair<std::size_t, std::size_t>> progress = {
        {0, 513}, {200, 513}, {512, 513}, {513, 513}, {0, 0}};
    EXPECT_EQ(bench.view.progress, progress);
}

TEST(IdentificationTest, EachReplyHasItsTypeCode)
{
    const std::pair<const char*, int> table[] = {{"04", 0}, {"14", 0},  {"15", 1},  {"16", 2},
                                                 {"24", 4}, {"25", 5},  {"26", 6},  {"27", 7},
                                                 {"28", 8}, {"80", 80}, {"81", 81}, {"A7", 57}};
    for (const auto& [reply, code] : table) {
        EXPECT_EQ(typeCodeOf(bytesOf(reply), ReadOnlyReceiver::accepted), code) << reply;
        EXPECT_EQ(blockReplyLength(code), code == 7 || code == 8 ? 1025u : 513u) << reply;
    }
    EXPECT_EQ(typeCodeOf({'8', '1'}, ReadOnlyReceiver::refused), std::nullopt);
    for (const char* const reply : {"", "2", "27\r", "a7", "57"})
        EXPECT_EQ(typeCodeOf(bytesOf(reply), ReadOnlyReceiver::accepted), std::nullopt) << reply;
}

TEST_F(ExchangeTest, TheSecondCharacterOfAnIdentificationMayComeFiftyMillisecondsLater)
{
    bench.state.typeCode = 8;
    bench.line.replyInPieces({{5ms, {'2'}}, {80ms, {'7'}}});
    EXPECT_EQ(IdentifyDecoder(bench.link, ReadOnlyReceiver::accepted), IdentificationEnd::unknown);
    EXPECT_EQ(bench.line.now(), 55ms);
    EXPECT_EQ(bench.state.typeCode, 8);
    EXPECT_FALSE(bench.state.identified);
    EXPECT_EQ(bench.journal.back(), "message unknown decoder\r\nreply \"2\"");

    bench.line.replyInPieces({{5ms, {'2'}}, {54ms, {'7'}}});
    EXPECT_EQ(IdentifyDecoder(bench.link, ReadOnlyReceiver::accepted), IdentificationEnd::identified);
    EXPECT_EQ(bench.line.now(), 109ms);
    EXPECT_EQ(bench.state.typeCode, 7);
    EXPECT_EQ(bench.state.identification, u"27");
    EXPECT_TRUE(bench.state.identified);
    EXPECT_TRUE(bench.state.lastReply.empty());
}

} // namespace
} // namespace karvo
