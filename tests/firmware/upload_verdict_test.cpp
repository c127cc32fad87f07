// What an upload's replies say, in the report and in words.
#include "firmware/upload_verdict.h"

#include "firmware/transfer_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

const Bytes message = {0x1B, 0x16, 0x00, 0x01, 0x0E, 0x13, 0x11};
const Bytes good = {0x1B, 0x16, 0x00, 0x02, 0x0E, 0x13, 0x00, 0x12}; // the reply to it

Bytes with(Bytes bytes, std::size_t place, std::uint8_t value)
{
    bytes.back() = static_cast<std::uint8_t>(bytes.back() ^ bytes[place] ^ value);
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
    Bytes wrongSum = good;
    wrongSum.back() ^= 1U;
    const Case cases[] = {
        {"good", good, ReplyVerdict::accepted},
        {"garbage around it", joined(joined({0x55, 0x1B, 0xFF}, good), {0x55}), ReplyVerdict::accepted},
        {"nothing", {}, ReplyVerdict::missing},
        {"cut", Bytes(good.begin(), good.end() - 1), ReplyVerdict::damaged},
        {"size of three", with(good, 3, 3), ReplyVerdict::damaged},
        {"check byte", wrongSum, ReplyVerdict::damaged},
        {"token", with(good, 4, 0x0F), ReplyVerdict::damaged},
        {"sequence", with(good, 1, 0x17), ReplyVerdict::damaged},
        {"status", with(good, 6, 0xC0), ReplyVerdict::refused},
        {"check-sum error", with(good, 5, 0xB0), ReplyVerdict::refused},
        {"the refusal comes first", joined(with(good, 6, 0xC0), good), ReplyVerdict::refused},
    };
    for (const Case& expected : cases) {
        ReplyJudge judge;
        judge.take(message, expected.reply);
        EXPECT_EQ(judge.verdicts().front(), expected.verdict) << expected.what;
    }
    ReplyJudge judge;
    judge.take(good, good);
    EXPECT_EQ(judge.verdicts().front(), ReplyVerdict::damaged) << "an echo is no reply";
}

TEST(ReplyJudge, AReplyThatComesInPiecesOrLateCountsForItsMessage)
{
    ReplyJudge judge;
    judge.take(message, {good.begin(), good.begin() + 3});
    EXPECT_EQ(judge.verdicts().back(), ReplyVerdict::damaged);
    judge.take(with(message, 1, 0x17), joined({good.begin() + 3, good.end()}, with(good, 1, 0x17)));
    EXPECT_EQ(judge.verdicts(), (std::vector{ReplyVerdict::accepted, ReplyVerdict::accepted}));
}

struct VerdictBench : test::TransferBench {
    VerdictBench()
    {
        test::setTexts(state.texts, {}, {{647, u"all {1}"}, {649, u"not {1}."}, {654, u"{1} of {2}"}});
        test::setTexts(state.texts, {}, {{658, u"page {1}"}, {662, u"and {1} more"}});
    }
    std::string told(const UploadReport& report) { return utf8FromText(uploadVerdict(state.texts, report)); }
};

TEST(UploadVerdict, SaysWhatWasNotTaken)
{
    struct Case {
        sim::Fault fault;
        std::string told;
        std::size_t flashed; // pages
    };
    const Case cases[] = {
        {sim::Fault::none, "all 20", 20},
        {sim::Fault::strictLoader, "all 20", 20},
        {sim::Fault::terseLoader, "all 20", 20},
        {sim::Fault::changedByte, "not page 4 (c632).\r\n19 of 20\r\nc652 c650", 19},
        {sim::Fault::silentLoader,
         "not page 1 (c632), page 2 (c632), page 3 (c632), page 4 (c632), page 5 (c632), page 6 (c632) "
         "and 14 more.\r\n0 of 20\r\nc652 c650",
         20},
        {sim::Fault::silence, "c648\r\nc653 c650", 0},
    };
    for (const Case& expected : cases) {
        VerdictBench bench;
        bench.device.setFault(expected.fault);
        const auto report = bench.upload(160);
        EXPECT_EQ(bench.told(report), expected.told);
        EXPECT_EQ(report.isAccepted(), expected.told == "all 20");
        EXPECT_EQ(bench.device.simulator().bootLoader().flash().size(), expected.flashed * 128);
    }
}

TEST(UploadVerdict, TellsErasedFromMayBeErasedAndAStopFromAnEnd)
{
    VerdictBench bench;
    const auto told = [&](UploadPhase phase, bool counts, const Bytes& reply, ReplyVerdict verdict) {
        const UploadStep first{{UploadPhase::signOn, {0x1B}, 17}, {1}, ReplyVerdict::accepted};
        return bench.told({UploadEnd::stopped, {first, {{phase, {0x1B}, 10, counts}, reply, verdict}}, 9});
    };
    EXPECT_EQ(told(UploadPhase::fuses, false, {}, ReplyVerdict::missing), "c628\r\n0 of 9\r\nc651");
    EXPECT_EQ(told(UploadPhase::erase, true, {1}, ReplyVerdict::accepted), "c628\r\n0 of 9\r\nc652 c650");
    EXPECT_EQ(told(UploadPhase::erase, true, {1}, ReplyVerdict::damaged),
              "c628\r\nnot c657 (c660).\r\n0 of 9\r\nc653 c650");
    EXPECT_EQ(bench.told({UploadEnd::lineBusy, {}}), "");
}

TEST(UploadVerdict, TheLogHoldsTheBytesBothWaysAndWhatIsWrong)
{
    VerdictBench bench;
    const auto log = [&](const Bytes& reply, ReplyVerdict verdict) {
        const UploadStep step{{UploadPhase::signOn, {0x1B, 0x01}, 2}, reply, verdict};
        return utf8FromText(uploadLog(bench.state.texts, step));
    };
    EXPECT_EQ(log({0x0A, 0xFF}, ReplyVerdict::accepted), "> 1B 01\r\n< 0A FF");
    EXPECT_EQ(log({0x0A}, ReplyVerdict::refused), "> 1B 01\r\n< 0A (c661)");
    EXPECT_EQ(log({}, ReplyVerdict::missing), "> 1B 01\r\n< (c632)");
}

} // namespace
} // namespace karvo
