#include "link/series_write.h"
#include "link/write.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::bytesOf;
using enum WriteEnd;

const Bytes ack = {6};
const Bytes nack = {21};

struct WriteBench : test::LinkBench {
    WriteBench() { test::addWriteTexts(texts); }

    void answer(const std::vector<Bytes>& replies)
    {
        for (const Bytes& reply : replies)
            line.replyWith(reply);
    }
    void answerAll(const Bytes& frameReply = ack) { answer({bytesOf("27"), ack, frameReply}); }
    // What has happened since the last call.
    std::string passed() { return test::joined(std::exchange(journal, {})); }
    long times(const char* entry) const { return std::count(journal.begin(), journal.end(), entry); }
};

class WriteTest : public testing::Test
{
protected:
    WriteBench bench;
};

TEST_F(WriteTest, IdentifiesEachTimeAndSendsCvMinusOneValueAndTheirSum)
{
    const std::pair<WriteCommand, std::string> cases[] = {
        {{1, 0}, "0 0 0"},           {{1, 255}, "0 255 255"}, {{2, 255}, "1 255 0"},
        {{256, 255}, "255 255 254"}, {{256, 0}, "255 0 255"}, {{99, 1}, "98 1 99"},
        {{98, 1, 2}, "97 1 98"},     {{161, 3}, "160 3 163"}, {{48, 1, 3, u"27"}, "47 1 48"}};
    std::string opening = "open 1, ";
    for (const auto& [command, frame] : cases) {
        bench.answerAll();
        EXPECT_EQ(writeCv(bench.link, command), written);
        EXPECT_EQ(bench.passed(), "status writing CV" + std::to_string(command.cv) + ", " +
                                      std::exchange(opening, "") + "write 37, write 69 87 83, write " +
                                      frame + ", status c873");
        EXPECT_EQ(bench.state.typeCode, 7);
    }
}

TEST_F(WriteTest, EachFaultEndsTheWriteWithItsWords)
{
    const std::string silent = "message no reply\r\nnothing came, status ";
    const std::string unknown = "write 37, message unknown decoder\r\nreply ";
    const Bytes kv07 = bytesOf("27");
    // The type code known before, what is written, the replies, the end, and the end of the journal.
    const std::tuple<int, WriteCommand, std::vector<Bytes>, WriteEnd, std::string> cases[] = {
        // Silence after "%" is named by the type known before, after "EWS" by the type just identified.
        {7, {48, 1}, {}, noReply, "write 37, " + silent + "c902"},
        {8, {48, 1}, {}, noReply, "write 37, " + silent + "c902"},
        {0, {48, 1}, {}, noReply, "write 37, " + silent + "c900"},
        {57, {48, 1}, {}, noReply, "write 37, " + silent + "c900"},
        {0, {48, 1}, {kv07}, noReply, "write 69 87 83, " + silent + "c903"},
        {0, {48, 1}, {bytesOf("28")}, noReply, "write 69 87 83, " + silent + "c903"},
        {7, {48, 1}, {bytesOf("26")}, noReply, "write 69 87 83, " + silent + "c901"},
        {7, {48, 1}, {bytesOf("80")}, noReply, "write 69 87 83, " + silent + "c901"},
        {0, {48, 1}, {kv07, ack}, unacknowledged, "write 47 1 48, " + silent + "menu 76"},
        {0, {48, 1}, {bytesOf("81")}, unknownDecoder, unknown + "\"81\", message m572"},
        {0, {48, 1}, {bytesOf("27\r")}, unknownDecoder, unknown + "0x32 0x37 0x0D, message m572"},
        {0, {48, 1}, {{178, 32, 55}}, unknownDecoder, unknown + "0xB2 0x20 0x37, message m572"},
        {0,
         {48, 1},
         {bytesOf("0123456789abcdefg")},
         unknownDecoder,
         unknown + "\"0123456789abcdef\" ..., message m572"},
        {0, {48, 1, 3, u"27"}, {bytesOf("28")}, otherDecoder, "write 37"},
        {0, {48, 1}, {kv07, nack}, commandRefused, "write 69 87 83, message m294"},
        {0, {48, 1}, {kv07, {7, 6}}, commandRefused, "write 69 87 83, message m294"},
        {0, {161, 1}, {kv07, nack}, commandRefused, "write 69 87 83, message m294"},
        {0, {48, 1}, {kv07, ack, nack}, frameRefused, "write 47 1 48, message m83\r\nCV 48 m94"},
        {0, {161, 3}, {kv07, ack, nack}, unconfirmed, "write 160 3 163"},
        {0, {99, 1, 2}, {}, guarded, "message m296"},
    };
    bench.state.noticeAfterWrite = true;
    for (const auto& [typeCode, command, replies, end, tail] : cases) {
        bench.state.typeCode = typeCode;
        bench.answer(replies);
        const auto start = bench.line.now();
        EXPECT_EQ(writeCv(bench.link, command), end);
        const auto passed = bench.passed();
        EXPECT_TRUE(passed.ends_with(tail)) << passed;
        const bool silence = passed.find("nothing came") != std::string::npos;
        EXPECT_EQ(bench.line.now() - start >= 5000ms, silence) << passed;
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_TRUE(bench.line.isOpen());
        EXPECT_FALSE(bench.line.hasUnusedReplies()) << passed;
    }
}

TEST_F(WriteTest, TheResetAsksFirstAndEndsWithTheMessageOfItsKind)
{
    const std::string refused = "message m83\r\nCV 59 m94";
    // The type code, the end of the question, the identification, the replies behind it, the end of the
    // journal.
    const std::tuple<int, const char*, const char*, std::vector<Bytes>, WriteEnd, std::string> cases[] = {
        {7, "m92\r\nm93\r\nm91", "27", {ack, ack}, written, "status c873, message m87"},
        {7, "m92\r\nm93\r\nm91", "27", {ack, nack}, frameRefused, refused + ", message m87"},
        {80, "m91", "80", {ack, ack}, written, "status c873, message m85"},
        {80, "m91", "80", {ack, nack}, frameRefused, refused + ", message m86"},
        // Ends where the time-out ends every write.
        {80, "m91", "80", {ack}, unacknowledged, "nothing came, status menu 76"},
    };
    bench.state.noticeAfterWrite = true; // a reset has no notice
    for (const auto& [typeCode, question, identification, replies, end, passed] : cases) {
        bench.state.typeCode = typeCode;
        bench.prompts.answer(false);
        EXPECT_EQ(writeCv(bench.link, {59, 1}), refusedByUser);
        EXPECT_EQ(bench.passed(), std::string("question m88\r\nm89\r\nm90\r\n") + question);
        bench.prompts.answer(true);
        bench.answer({bytesOf(identification)});
        bench.answer(replies);
        EXPECT_EQ(writeCv(bench.link, {59, 1}), end);
        const auto after = bench.passed();
        EXPECT_TRUE(after.ends_with(passed)) << after;
    }
}

TEST_F(WriteTest, TheNoticeNamesWhatHasBeenWrittenWhereItIsWanted)
{
    const std::pair<int, std::string> cases[] = {
        {48, "message CV 48  m297"},   {248, "message CV11 + CV12  m297"},
        {249, "message CV 249  m297"}, {250, "message CV13 + CV14  m297"},
        {242, "message CV 242  m297"}, {243, "status c873"},
        {246, "status c873"},          {247, "message CV 247  m297"}};
    const auto lastOf = [&](int cv) {
        bench.answerAll();
        writeCv(bench.link, {cv, 1});
        return bench.journal.back();
    };
    EXPECT_EQ(lastOf(48), "status c873") << "not wanted";
    bench.state.noticeAfterWrite = true;
    for (const auto& [cv, last] : cases)
        EXPECT_EQ(lastOf(cv), last);
    bench.state.manyUnderWay = true;
    EXPECT_EQ(lastOf(48), "status c873") << "told by the operation";
}

TEST_F(WriteTest, ClosingTheProgramShowsNothingAtAnyStep)
{
    const std::string sent[] = {"write 37", ", write 69 87 83", ", write 47 1 48"};
    std::string expected = "status writing CV48, open 1, ";
    const std::vector<Bytes> replies = {bytesOf("27"), ack};
    for (std::size_t answered = 0; answered < 3; ++answered) {
        WriteBench fresh;
        for (std::size_t i = 0; i < answered; ++i)
            fresh.line.replyWith(replies[i]);
        fresh.line.endWhenSilent();
        EXPECT_EQ(writeCv(fresh.link, {48, 1}), ended) << answered;
        EXPECT_EQ(fresh.passed(), expected += sent[answered]);
    }
}

class SeriesWriteTest : public testing::Test
{
protected:
    std::vector<WriteEnd> write()
    {
        const auto ends = writeSeries(bench.link, {10, 20, 30, 40, 50}, {});
        EXPECT_FALSE(bench.state.seriesUnderWay);
        return {ends.begin(), ends.end()};
    }

    WriteBench bench;
};

TEST_F(SeriesWriteTest, FiveCvsInOrderEachWithItsStatusAndAPauseWhateverBecomesOfOne)
{
    bench.state.noticeAfterWrite = true; // without effect during a series
    bench.view.showStatus(u"ready");
    bench.answerAll();
    bench.answerAll(nack);
    bench.answer({bytesOf("99")});
    bench.line.replyWith(bytesOf("27"));
    bench.line.replyWith(ack);
    bench.line.replyInPieces({{0ms, ack}, {50ms, {}}}); // the adapter is pulled in the pause, and back
    bench.answerAll();
    EXPECT_EQ(write(), (std::vector{written, frameRefused, unknownDecoder, written, written}));
    EXPECT_EQ(bench.line.now(), 500ms);
    EXPECT_EQ(bench.times("open 1"), 2);
    const auto passed = bench.passed();
    EXPECT_TRUE(passed.starts_with("status ready, status ready 167 , status writing CV167, open 1, write 37, "
                                   "write 69 87 83, write 166 10 176, status c873, status c873 168 "))
        << passed;
    EXPECT_NE(passed.find("message m83\r\nCV 168 m94"), std::string::npos);
    EXPECT_TRUE(passed.ends_with("write 170 50 220, status c873")) << passed;
}

TEST_F(SeriesWriteTest, TheEndOfTheProgramStopsIt)
{
    bench.answerAll();
    bench.line.replyWith(bytesOf("27"));
    bench.line.replyWith(ack);
    bench.line.replyInPieces({{0ms, ack}, {50ms, {}}});
    bench.line.refuseToOpenAgain({u"no such device", {}});
    EXPECT_EQ(write(), (std::vector{written, written, ended, ended, ended}));
    const auto passed = bench.passed();
    EXPECT_TRUE(passed.ends_with("status writing CV169, message no such device, end program")) << passed;
}

} // namespace
} // namespace karvo
