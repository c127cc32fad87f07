// What an upload's replies say, in the report and in words.
#include "firmware/upload_verdict.h"

#include "firmware/transfer_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

const Bytes page = {0x1B, 0x16, 0x00, 0x02, 0x0E, 0x13, 0x00, 0x12}; // the body is not of interest here
const Bytes goodReply = {0x1B, 0x16, 0x00, 0x02, 0x0E, 0x13, 0x00, 0x12};

Bytes with(Bytes bytes, std::size_t place, std::uint8_t value)
{
    bytes[bytes.size() - 1] = static_cast<std::uint8_t>(bytes.back() ^ bytes[place] ^ value);
    bytes[place] = value;
    return bytes;
}

Bytes joined(Bytes first, const Bytes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST(ReplyJudge, GoesByTheReplysOwnSizeCheckByteSequenceAndStatus)
{
    struct Case {
        const char* what;
        Bytes reply;
        ReplyVerdict verdict;
    };
    const Bytes message = {0x1B, 0x16, 0x00, 0x01, 0x0E, 0x13, 0x11};
    Bytes wrongSum = goodReply;
    wrongSum.back() ^= 1U;
    const Case cases[] = {
        {"good", goodReply, ReplyVerdict::accepted},
        {"garbage around it", joined(joined({0x55, 0x1B, 0xFF}, goodReply), {0x55}), ReplyVerdict::accepted},
        {"nothing", {}, ReplyVerdict::missing},
        {"cut", Bytes(goodReply.begin(), goodReply.end() - 1), ReplyVerdict::damaged},
        {"size of three", with(goodReply, 3, 3), ReplyVerdict::damaged},
        {"check byte", wrongSum, ReplyVerdict::damaged},
        {"token", with(goodReply, 4, 0x0F), ReplyVerdict::damaged},
        {"sequence", with(goodReply, 1, 0x17), ReplyVerdict::damaged},
        {"status", with(goodReply, 6, 0xC0), ReplyVerdict::refused},
        {"check-sum error", with(goodReply, 5, 0xB0), ReplyVerdict::refused},
        {"the refusal comes first", joined(with(goodReply, 6, 0xC0), goodReply), ReplyVerdict::refused},
    };
    for (const Case& expected : cases) {
        ReplyJudge judge;
        judge.take(message, expected.reply);
        EXPECT_EQ(judge.verdicts().front(), expected.verdict) << expected.what;
    }
    ReplyJudge judge;
    judge.take(page, page);
    EXPECT_EQ(judge.verdicts().front(), ReplyVerdict::damaged) << "an echo is no reply";
}

TEST(ReplyJudge, AReplyThatComesInPiecesOrLateCountsForItsMessage)
{
    ReplyJudge judge;
    const Bytes message = {0x1B, 0x16, 0x00, 0x01, 0x0E, 0x13, 0x11};
    judge.take(message, {goodReply.begin(), goodReply.begin() + 3});
    EXPECT_EQ(judge.verdicts().back(), ReplyVerdict::damaged);
    judge.take(with(message, 1, 0x17),
               joined({goodReply.begin() + 3, goodReply.end()}, with(goodReply, 1, 0x17)));
    EXPECT_EQ(judge.verdicts(), (std::vector{ReplyVerdict::accepted, ReplyVerdict::accepted}));
}

struct VerdictBench : test::TransferBench {
    // Each text is its own number.
    VerdictBench()
    {
        for (const int caption : {628, 632, 648, 650, 651, 652, 653, 655, 656, 657, 660, 661})
            test::setCaption(state.texts, caption, u"c" + textFromNumber(caption));
        test::setCaption(state.texts, 647, u"all {1}");
        test::setCaption(state.texts, 649, u"not {1}.");
        test::setCaption(state.texts, 654, u"{1} of {2}");
        test::setCaption(state.texts, 658, u"page {1}");
        test::setCaption(state.texts, 662, u"and {1} more");
    }
    std::string told(const UploadReport& report) { return utf8FromText(uploadVerdict(state.texts, report)); }
};

TEST(UploadVerdict, SaysWhatWasNotTaken)
{
    struct Case {
        sim::Fault fault;
        const char* told;
        std::size_t flashed; // pages
    };
    const Case cases[] = {
        {sim::Fault::none, "all 20", 20},
        {sim::Fault::strictLoader, "all 20", 20},
        {sim::Fault::terseLoader, "all 20", 20},
        {sim::Fault::changedByte, "not page 4 (c632).\r\n19 of 20\r\nc652 c650", 19},
        {sim::Fault::silentLoader,
         "not page 1 (c632), page 2 (c632), page 3 (c632), page 4 (c632), page 5 (c632), page 6 (c632) and "
         "14 "
         "more.\r\n0 of 20\r\nc652 c650",
         20},
        {sim::Fault::silence, "c648\r\nc653 c650", 0},
    };
    for (const Case& expected : cases) {
        VerdictBench bench;
        bench.device.setFault(expected.fault);
        const auto report = bench.upload(160);
        EXPECT_EQ(bench.told(report), expected.told);
        EXPECT_EQ(report.isAccepted(), expected.told == std::string("all 20"));
        EXPECT_EQ(bench.device.simulator().bootLoader().flash().size(), expected.flashed * 128);
    }
}

class UploadVerdictTest : public testing::Test, public VerdictBench
{
};

TEST_F(UploadVerdictTest, TellsErasedFromMayBeErasedAndAStopFromAnEnd)
{
    const PlannedMessage signOn{UploadPhase::signOn, {0x1B}, 17};
    const PlannedMessage erase{UploadPhase::erase, {0x1B}, 10};
    const PlannedMessage remark{UploadPhase::fuses, {0x1B}, 10, false};
    const auto report = [](std::vector<UploadStep> steps) {
        return UploadReport{UploadEnd::stopped, std::move(steps), 9};
    };
    const UploadStep good{signOn, {1}, ReplyVerdict::accepted};
    EXPECT_EQ(told(report({good, {remark, {}, ReplyVerdict::missing}})), "c628\r\n0 of 9\r\nc651");
    EXPECT_EQ(told(report({good, {erase, {1}, ReplyVerdict::accepted}})), "c628\r\n0 of 9\r\nc652 c650");
    EXPECT_EQ(told(report({good, {erase, {1}, ReplyVerdict::damaged}})),
              "c628\r\nnot c657 (c660).\r\n0 of 9\r\nc653 c650");
    EXPECT_EQ(told({UploadEnd::lineBusy, {}}), "");
}

TEST_F(UploadVerdictTest, TheLogHoldsTheBytesBothWaysAndWhatIsWrong)
{
    const auto log = [&](const Bytes& reply, ReplyVerdict verdict) {
        return utf8FromText(uploadLog(state.texts, {{UploadPhase::signOn, {0x1B, 0x01}, 2}, reply, verdict}));
    };
    EXPECT_EQ(log({0x0A, 0xFF}, ReplyVerdict::accepted), "> 1B 01\r\n< 0A FF");
    EXPECT_EQ(log({0x0A}, ReplyVerdict::refused), "> 1B 01\r\n< 0A (c661)");
    EXPECT_EQ(log({}, ReplyVerdict::missing), "> 1B 01\r\n< (c632)");
}

} // namespace
} // namespace karvo
