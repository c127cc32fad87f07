#include "link/write.h"
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
using test::bytesOf;
using enum WriteEnd;

const Bytes ack = {6};
const Bytes nack = {21};

struct WriteBench : test::LinkBench {
    WriteBench() { test::addTexts(texts, "link/write_texts.txt"); }

    void answer(const std::vector<Bytes>& replies)
    {
        for (const Bytes& reply : replies)
            line.replyWith(reply);
    }
    void answerAll(const Bytes& frameReply = ack) { answer({bytesOf("27"), ack, frameReply}); }
    // What has happened since the last call.
    std::string passed() { return test::joined(std::exchange(journal, {})); }
    auto times(const char* entry) const { return std::count(journal.begin(), journal.end(), entry); }
};

class WriteTest : public testing::Test
{
protected:
    std::vector<WriteEnd> writeFive()
    {
        const auto ends = writeSeries(bench.link, {10, 20, 30, 40, 50}, {});
        EXPECT_FALSE(bench.state.seriesUnderWay);
        return {ends.begin(), ends.end()};
    }

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
        EXPECT_EQ(bench.state.typeCode, TypeCode::kv07);
    }
}

TEST_F(WriteTest, EachFaultEndsTheWriteWithItsWords)
{
    const std::array<std::string, 11> ends = {
        "written",        "unconfirmed",  "refusedByUser",  "guarded",      "noReply", "unacknowledged",
        "unknownDecoder", "otherDecoder", "commandRefused", "frameRefused", "ended"};
    bench.state.noticeAfterWrite = true;
    for (const auto& [typeCode, values, onlyFor, replies, end, tail] :
         test::casesOf<6>("link/write_faults.txt")) {
        bench.state.typeCode = TypeCode{std::stoi(typeCode)};
        WriteCommand command{0, 0, 0, textFromUtf8(onlyFor)};
        std::istringstream(values) >> command.cv >> command.value >> command.firmwareLevel;
        std::istringstream each(replies);
        for (std::string reply; std::getline(each, reply, ',');)
            bench.line.replyWith(bytesOf(reply));
        const auto start = bench.line.now();
        EXPECT_EQ(ends.at(static_cast<std::size_t>(writeCv(bench.link, command))), end);
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
        bench.state.typeCode = TypeCode{typeCode};
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

TEST_F(WriteTest, ASeriesIsFiveCvsInOrderEachWithItsStatusAndAPauseWhateverBecomesOfOne)
{
    const auto pullTheAdapterInThePause = [&] {
        bench.answer({bytesOf("27"), ack});
        bench.line.replyInPieces({{0ms, ack}, {50ms, {}}});
    };
    bench.state.noticeAfterWrite = true; // without effect during a series
    bench.view.showStatus(u"ready");
    bench.answerAll();
    bench.answerAll(nack);
    bench.answer({bytesOf("99")});
    pullTheAdapterInThePause();
    bench.answerAll();
    EXPECT_EQ(writeFive(), (std::vector{written, frameRefused, unknownDecoder, written, written}));
    EXPECT_EQ(bench.line.now(), 500ms);
    EXPECT_EQ(bench.times("open 1"), 2);
    auto passed = bench.passed();
    EXPECT_TRUE(passed.starts_with("status ready, status ready 167 , status writing CV167, open 1, write 37, "
                                   "write 69 87 83, write 166 10 176, status c873, status c873 168 "))
        << passed;
    EXPECT_NE(passed.find("message m83\r\nCV 168 m94"), std::string::npos);
    EXPECT_TRUE(passed.ends_with("write 170 50 220, status c873")) << passed;

    bench.answerAll();
    pullTheAdapterInThePause();
    bench.line.refuseToOpen({u"no such device", {}});
    EXPECT_EQ(writeFive(), (std::vector{written, written, ended, ended, ended}));
    passed = bench.passed();
    EXPECT_TRUE(passed.ends_with("status writing CV169, message no such device, end program")) << passed;
}

} // namespace
} // namespace karvo
