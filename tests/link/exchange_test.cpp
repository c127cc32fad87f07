// Ports, exchanges, identifications and live values.
#include "link/identification.h"
#include "link/live_value.h"
#include "link/port_choice.h"
#include "support/case_table.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <map>
#include <numeric>
#include <sstream>

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
        EXPECT_EQ(sendLiveValue(bench.link, {2, 5}, ClosedPort::opened), LiveEnd::ended);
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
    const std::map<std::string, int> codes = {{"04", 0}, {"14", 0},  {"15", 1},  {"16", 2},
                                              {"24", 4}, {"25", 5},  {"26", 6},  {"27", 7},
                                              {"28", 8}, {"80", 80}, {"81", 81}, {"A7", 57}};
    for (const auto& [reply, code] : codes) {
        EXPECT_EQ(typeCodeOf(bytesOf(reply), ReadOnlyReceiver::accepted), TypeCode{code}) << reply;
        EXPECT_EQ(blockReplyLength(TypeCode{code}), code == 7 || code == 8 ? 1025u : 513u) << reply;
    }
    EXPECT_EQ(typeCodeOf({'8', '1'}, ReadOnlyReceiver::refused), std::nullopt);
    for (const char* const reply : {"", "2", "27\r", "a7", "57"})
        EXPECT_EQ(typeCodeOf(bytesOf(reply), ReadOnlyReceiver::accepted), std::nullopt) << reply;
}

TEST_F(ExchangeTest, TheSecondCharacterOfAnIdentificationMayComeFiftyMillisecondsLater)
{
    bench.state.typeCode = TypeCode::kv08;
    bench.line.replyInPieces({{5ms, {'2'}}, {80ms, {'7'}}});
    EXPECT_EQ(IdentifyDecoder(bench.link, ReadOnlyReceiver::accepted), IdentificationEnd::unknown);
    EXPECT_EQ(bench.line.now(), 55ms);
    EXPECT_EQ(bench.state.typeCode, TypeCode::kv08);
    EXPECT_FALSE(bench.state.identified);
    EXPECT_EQ(bench.journal.back(), "message unknown decoder\r\nreply \"2\"");

    bench.line.replyInPieces({{5ms, {'2'}}, {54ms, {'7'}}});
    EXPECT_EQ(IdentifyDecoder(bench.link, ReadOnlyReceiver::accepted), IdentificationEnd::identified);
    EXPECT_EQ(bench.line.now(), 109ms);
    EXPECT_EQ(bench.state.typeCode, TypeCode::kv07);
    EXPECT_EQ(bench.state.identification, u"27");
    EXPECT_TRUE(bench.state.identified);
    EXPECT_TRUE(bench.state.lastReply.empty());
}

TEST(LiveValueTest, ThreeExchangesInTheirOrderOrAFaultThatIsTold)
{
    const std::array<std::string, 4> ends = {"sent", "noReply", "unknownDecoder", "refused"};
    const Journal sent = {", write 37", ", write 69 87 77", ", write 2 5 7"};
    for (const auto& [replies, end, exchanges, told] : test::casesOf<4>("link/live_values.txt")) {
        LinkBench bench;
        test::setText(bench.texts, 294, u"m294");
        bench.state.typeCode = TypeCode{33};
        std::istringstream each(replies);
        for (std::string reply; std::getline(each, reply, ',');)
            bench.line.replyWith(bytesOf(reply));
        const auto ended = sendLiveValue(bench.link, {2, 5}, ClosedPort::opened);
        EXPECT_EQ(ends.at(static_cast<std::size_t>(ended)), end);
        const auto count = std::stoi(exchanges);
        EXPECT_EQ(joined(bench.journal),
                  std::accumulate(sent.begin(), sent.begin() + count, std::string("open 1")) + told);
        EXPECT_EQ(bench.state.typeCode, count > 1 ? TypeCode::kv07 : TypeCode{33});
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_TRUE(bench.line.isOpen());
    }
}

TEST(LiveValueTest, TheSumOfThePacketIsModulo256AndAClosedPortStaysClosedUnlessAskedFor)
{
    LinkBench bench;
    EXPECT_EQ(sendLiveValue(bench.link, {2, 255}, ClosedPort::leftClosed), LiveEnd::lineLost);
    EXPECT_TRUE(bench.journal.empty());
    for (const Bytes& reply : {bytesOf("80"), Bytes{6}, Bytes{6, 9}})
        bench.line.replyWith(reply);
    EXPECT_EQ(sendLiveValue(bench.link, {2, 255}, ClosedPort::opened), LiveEnd::sent);
    EXPECT_EQ(bench.journal.back(), "write 2 255 1");
    EXPECT_EQ(bench.state.lastReply, (Bytes{6, 9}));
}

TEST(PortChoiceTest, OnlyOneToThirtyOneIsAPort)
{
    EXPECT_EQ(portNumberFromSetting(Text(u"31")), 31);
    for (const TextView stored : {u"", u"0", u"32", u"-4", u"COM5", u"5.0"})
        EXPECT_EQ(portNumberFromSetting(Text(stored)), 1) << utf8FromText(stored);
    EXPECT_EQ(portNumberFromSetting(std::nullopt), 1);
    EXPECT_EQ(portNumberToBeginWith({5}), 5);
    EXPECT_EQ(portNumberToBeginWith({4, 5}), 1);
}

TEST(PortChoiceTest, TheSearchTriesAllInOrderAndChoosingStoresTheNumber)
{
    LinkBench bench;
    test::MemorySettings settings;
    bench.line.stayPresent({12, 1, 31});
    choosePort(bench.state, bench.line, settings, 12);
    EXPECT_EQ(settings.values["Parameter/Com_Port"], u"12");
    EXPECT_EQ(bench.state.portNumber, 12);
    ASSERT_FALSE(bench.line.open());
    EXPECT_EQ(searchPorts(bench.state, bench.line), (std::vector<int>{1, 12, 31}));
    EXPECT_FALSE(bench.line.isOpen());
    EXPECT_EQ(bench.line.portNumber(), 12);
    EXPECT_EQ(bench.journal,
              (Journal{"open 12", "close", "open 1", "close", "open 12", "close", "open 31", "close"}));
    bench.line.open();
    choosePort(bench.state, bench.line, settings, 4);
    EXPECT_FALSE(bench.line.isOpen());
}

} // namespace
} // namespace karvo
