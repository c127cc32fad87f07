#include "link/identification.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::Journal;
using test::LinkBench;

TEST(EnsurePortOpenTest, OpensTheChosenPortOnceAndLeavesItOpen)
{
    LinkBench bench;
    bench.state.portNumber = 7;
    EXPECT_TRUE(EnsurePortOpen(bench.link));
    EXPECT_TRUE(EnsurePortOpen(bench.link));
    EXPECT_EQ(bench.journal, (Journal{"open 7"}));
}

TEST(EnsurePortOpenTest, ARefusedPortIsToldWithItsCauseAndEndsTheProgram)
{
    const struct {
        PortError error;
        bool unsaved;
        const char* text;
    } cases[] = {
        {{u"Gone", {}, PortFault::absent, u"/dev/ttyUSB0"},
         false,
         "Gone\r\n\r\nCOM5 at /dev/ttyUSB0\r\nm673\r\n\r\nm678"},
        {{u"Busy", {}, PortFault::busy, u"COM5"}, true, "Busy\r\n\r\nCOM5\r\nm674\r\n\r\nm678\r\nm679"},
        {{u"No", u"dialout", PortFault::denied, u"COM5"},
         false,
         "No\r\n\r\nCOM5\r\nm675\r\njoin group dialout\r\n\r\nm678"},
        {{u"No", {}, PortFault::notSerial}, false, "No\r\n\r\nCOM5\r\nm676\r\n\r\nm678"},
        {{u"No", {}}, false, "No\r\n\r\nCOM5\r\nm677\r\n\r\nm678"},
    };
    for (const auto& [error, unsaved, text] : cases) {
        LinkBench bench;
        test::setText(bench.texts, 671, u"{1} at {2}");
        test::setText(bench.texts, 672, u"{1}");
        for (const int number : {673, 674, 675, 676, 677, 678, 679})
            test::setText(bench.texts, number, u"m" + textFromNumber(number));
        bench.state.portNumber = 5;
        bench.link.unsavedWorkKept = unsaved;
        bench.line.refuseToOpen(error);
        EXPECT_FALSE(EnsurePortOpen(bench.link));
        EXPECT_EQ(bench.journal, (Journal{std::string("message ") + text, "end program"}));
    }
}

class ExchangeTest : public testing::Test
{
protected:
    ExchangeTest() { EnsurePortOpen(bench.link); }

    LinkBench bench;
};

TEST_F(ExchangeTest, WhatWaitedBeforeTheCommandIsDropped)
{
    bench.line.addWaitingBytes({1, 2, 3});
    bench.line.replyWith({6});
    EXPECT_EQ(Exchange(bench.link, {'E', 'W', 'S'}, ReplyLength::atLeastOne()), ExchangeEnd::replied);
    EXPECT_EQ(bench.state.lastReply, Bytes{6});
    EXPECT_EQ(bench.state.outgoingFrame, (Bytes{'E', 'W', 'S'}));
    EXPECT_EQ(bench.journal.back(), "write 69 87 83");
}

TEST_F(ExchangeTest, AnAcknowledgeEndsAtItsFirstByte)
{
    bench.line.replyInPieces({{10ms, {6}}, {12ms, {7}}});
    EXPECT_EQ(Exchange(bench.link, {'x'}, ReplyLength::atLeastOne()), ExchangeEnd::replied);
    EXPECT_EQ(bench.line.now(), 10ms);
    EXPECT_TRUE(IsAck(bench.state.lastReply));
    EXPECT_FALSE(IsAck({21, 6}));
    EXPECT_FALSE(IsAck({}));
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

TEST_F(ExchangeTest, MoreBytesThanAwaitedAreNoBlock)
{
    bench.line.replyWith(Bytes(514, 1));
    EXPECT_EQ(Exchange(bench.link, {'E', 'R'}, ReplyLength::exactly(513)), ExchangeEnd::timedOut);
}

TEST_F(ExchangeTest, TimesOutAfterFiveSecondsAndSendsNothingAgain)
{
    EXPECT_EQ(Exchange(bench.link, {'%'}, ReplyLength::identification()), ExchangeEnd::timedOut);
    EXPECT_EQ(bench.line.now(), 5000ms);
    EXPECT_TRUE(bench.state.timeOut);
    EXPECT_EQ(bench.journal, (Journal{"open 1", "write 37"}));
}

TEST_F(ExchangeTest, AHangUpEndsTheWaitAtOnce)
{
    bench.line.replyInPieces({{20ms, Bytes(10, 1)}, {40ms, {}}});
    EXPECT_EQ(Exchange(bench.link, {'E', 'R'}, ReplyLength::exactly(513)), ExchangeEnd::timedOut);
    EXPECT_EQ(bench.line.now(), 40ms);
}

TEST_F(ExchangeTest, ClosingTheProgramEndsTheWait)
{
    bench.line.endDuringNextWait();
    EXPECT_EQ(Exchange(bench.link, {'%'}, ReplyLength::identification()), ExchangeEnd::ended);
}

class IdentifyTest : public ExchangeTest
{
protected:
    IdentificationEnd identify(ReadOnlyReceiver readOnly = ReadOnlyReceiver::accepted)
    {
        return IdentifyDecoder(bench.link, readOnly);
    }
};

TEST_F(IdentifyTest, EachReplyHasItsTypeCode)
{
    const std::pair<const char*, int> table[] = {{"04", 0}, {"14", 0},  {"15", 1},  {"16", 2},
                                                 {"24", 4}, {"25", 5},  {"26", 6},  {"27", 7},
                                                 {"28", 8}, {"80", 80}, {"81", 81}, {"A7", 57}};
    for (const auto& [reply, code] : table) {
        const std::string text = reply;
        EXPECT_EQ(typeCodeOf(Bytes(text.begin(), text.end()), ReadOnlyReceiver::accepted), code) << reply;
    }
    EXPECT_EQ(typeCodeOf({'8', '1'}, ReadOnlyReceiver::refused), std::nullopt);
    for (const Bytes& reply : {Bytes{}, Bytes{'2'}, Bytes{'2', '7', '\r'}, Bytes{'a', '7'}, Bytes{'5', '7'}})
        EXPECT_EQ(typeCodeOf(reply, ReadOnlyReceiver::accepted), std::nullopt);
    EXPECT_EQ(blockReplyLength(7), 1025u);
    EXPECT_EQ(blockReplyLength(8), 1025u);
    for (const int code : {0, 1, 2, 4, 5, 6, 57, 80, 81})
        EXPECT_EQ(blockReplyLength(code), 513u) << code;
}

TEST_F(IdentifyTest, TheSecondCharacterMayComeLater)
{
    bench.line.replyInPieces({{5ms, {'2'}}, {54ms, {'7'}}});
    EXPECT_EQ(identify(), IdentificationEnd::identified);
    EXPECT_EQ(bench.state.typeCode, 7);
    EXPECT_EQ(bench.state.identification, u"27");
    EXPECT_TRUE(bench.state.identified);
    EXPECT_TRUE(bench.state.lastReply.empty());
    EXPECT_EQ(bench.line.now(), 54ms);
}

TEST_F(IdentifyTest, ALoneCharacterIsUnknownAfterFiftyMilliseconds)
{
    bench.state.typeCode = 8;
    bench.line.replyInPieces({{5ms, {'2'}}, {80ms, {'7'}}});
    EXPECT_EQ(identify(), IdentificationEnd::unknown);
    EXPECT_EQ(bench.line.now(), 55ms);
    EXPECT_EQ(bench.state.typeCode, 8);
    EXPECT_FALSE(bench.state.identified);
    EXPECT_EQ(bench.journal.back(), "message unknown decoder\r\nreply \"2\"");
}

TEST_F(IdentifyTest, TheReadOnlyReceiverIsRefusedWhereItIsToBeWritten)
{
    bench.line.replyWith({'8', '1'});
    EXPECT_EQ(identify(ReadOnlyReceiver::refused), IdentificationEnd::unknown);
}

} // namespace
} // namespace karvo
