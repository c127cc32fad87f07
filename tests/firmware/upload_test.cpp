// The upload to the boot loader: what is sent, what the replies say, and what is told of them.
#include "firmware/upload_verdict.h"
#include "link/exchange.h"
#include "program/bytes.h"
#include "support/case_table.h"
#include "support/hex_file.h"
#include "support/test_bench.h"

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

Bytes bytesOfDigits(const std::string& digits)
{
    return bytesFromHex(textFromUtf8(digits)).value();
}

TEST(ReplyJudge, GoesByTheReplysOwnSizeCheckByteSequenceAndStatus)
{
    const char* const words[] = {"accepted", "missing", "damaged", "refused"}; // in the order of the verdicts
    for (const auto& [what, reply, verdict] : test::casesOf<3>("firmware/replies.txt")) {
        ReplyJudge judge;
        judge.take(bytesOfDigits("1B1600010E1311"), bytesOfDigits(reply));
        EXPECT_EQ(words[static_cast<int>(judge.verdicts().front())], verdict) << what;
    }
}

TEST(ReplyJudge, AReplyThatComesInPiecesOrLateCountsForItsMessage)
{
    ReplyJudge judge;
    judge.take(bytesOfDigits("1B1600010E1311"), bytesOfDigits("1B1600"));
    EXPECT_EQ(judge.verdicts().back(), ReplyVerdict::damaged);
    judge.take(bytesOfDigits("1B1700010E1310"), bytesOfDigits("020E1300121B1700020E130013"));
    EXPECT_EQ(judge.verdicts(), (std::vector{ReplyVerdict::accepted, ReplyVerdict::accepted}));
}

HexImage image(std::size_t lines)
{
    return std::get<HexImage>(parseHexImage(test::bytesOf(test::hexFile(lines))));
}

struct UploadBench : test::TestBench, UploadObserver {
    UploadBench() { test::numberEveryText(state.texts); }
    void showUpload(const UploadProgress& progress) override { shown.push_back(progress); }
    void showStep(const UploadStep&) override { ++steps; }
    void showSilence(EraseState erase) override { silences.emplace_back(steps, erase); }
    bool stopRequested() override { return shown.size() == stopAfter; }

    UploadReport upload(std::size_t lines = 1) { return uploadImage(bench, image(lines), *this); }
    void answer(std::size_t messages)
    {
        for (std::size_t i = 0; i < messages; ++i)
            line.replyWith(Bytes(17, 0)); // long enough for every wait
    }

    std::vector<UploadProgress> shown;
    std::size_t steps = 0;
    std::vector<std::pair<std::size_t, EraseState>> silences; // behind so many messages
    std::size_t stopAfter = 0;
};

TEST(Upload, IsSentByteForByteOnAPortOpenedAnewAndTheNextExchangeHasItsOwnSettings)
{
    UploadBench bench;
    bench.line.open();
    const auto cases = test::casesOf<4>("firmware/upload_plan.txt");
    bench.answer(cases.size());
    const auto report = bench.upload(9); // the second page is filled up
    EXPECT_EQ(report.end, UploadEnd::sent);
    ASSERT_EQ(report.steps.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto& [phase, expectedReply, counts, bytes] = cases[i];
        const PlannedMessage& sent = report.steps[i].message;
        EXPECT_EQ(utf8FromText(bench.state.texts.caption(captionOfPhase(bench.shown[i].phase))), phase) << i;
        EXPECT_EQ(bench.shown[i].page, i < 21 ? 0 : i - 20);
        EXPECT_EQ(std::to_string(sent.expectedReply), expectedReply) << i;
        EXPECT_EQ(sent.countsForVerdict ? "counts" : "", counts) << i;
        EXPECT_EQ(utf8FromText(hexText(sent.bytes)), bytes);
    }
    EXPECT_EQ(uploadPlan(image(2048)).at(257).bytes[1], 2) << "the low byte of the sequence counts";
    const std::string begin = "open 0, busy, close, settings 115200 n 1, open 1, write 27 1 0 1 14 1 20, ";
    EXPECT_EQ(test::joined(bench.journal).substr(0, begin.size()), begin);
    bench.journal.clear();
    Link link = bench.bench.link();
    EnsurePortOpen(link);
    EnsurePortOpen(link);
    EXPECT_EQ(test::joined(bench.journal), "close, settings 4800 n 1, open 1");
}

TEST(Upload, ASilentLoaderCostsATimeOutEachAndNothingElse)
{
    // The first three messages; then three that count: programming mode, erase and the page.
    for (const auto& [answered, silence] : {std::pair{0U, std::pair{std::size_t{3}, EraseState::untouched}},
                                            {1U, {std::size_t{22}, EraseState::mayBeErased}}}) {
        UploadBench bench;
        bench.answer(answered);
        const auto report = bench.upload();
        EXPECT_EQ(report.end, UploadEnd::sent);
        EXPECT_EQ(report.anyReply(), answered != 0);
        EXPECT_EQ(bench.line.now(), (22 - answered) * 5000ms);
        EXPECT_EQ(bench.silences, (std::vector{silence}));
    }
}

TEST(Upload, StopsBeforeTheNextMessageOrBeforeTheFirst)
{
    for (const auto& [after, end] : {std::pair{5U, UploadEnd::stopped}, {22U, UploadEnd::sent}}) {
        UploadBench bench;
        bench.answer(after);
        bench.stopAfter = after;
        const auto report = bench.upload();
        EXPECT_EQ(report.end, end);
        EXPECT_EQ(report.steps.size(), after);
    }
    UploadBench bench;
    bench.state.lineBusy = true; // another operation has it
    EXPECT_EQ(bench.upload().end, UploadEnd::lineBusy);
    EXPECT_TRUE(bench.journal.empty());
}

TEST(UploadVerdict, TellsErasedFromMayBeErasedAndTheLogHoldsTheBytesBothWays)
{
    UploadBench bench;
    test::setTexts(bench.state.texts, {}, {{649, u"not {1}."}, {654, u"{1} of {2}"}});
    const std::tuple<UploadPhase, Bytes, ReplyVerdict, std::string, std::string> cases[] = {
        {UploadPhase::fuses, {}, ReplyVerdict::missing, "0 of 9\r\nc651", "(c632)"},
        {UploadPhase::erase, {0x0A, 0xFF}, ReplyVerdict::accepted, "0 of 9\r\nc652 c650", "0A FF"},
        {UploadPhase::erase,
         {1},
         ReplyVerdict::damaged,
         "not c657 (c660).\r\n0 of 9\r\nc653 c650",
         "01 (c660)"},
        {UploadPhase::settings,
         {1},
         ReplyVerdict::refused,
         "not c656 (c661).\r\n0 of 9\r\nc651",
         "01 (c661)"}};
    const UploadStep first{{UploadPhase::signOn, {0x1B}, 17}, {1}, ReplyVerdict::accepted};
    for (const auto& [phase, reply, verdict, told, log] : cases) {
        const UploadStep step{{phase, {0x1B, 0x01}, 10, phase != UploadPhase::fuses}, reply, verdict};
        EXPECT_EQ(utf8FromText(uploadVerdict(bench.state.texts, {UploadEnd::stopped, {first, step}, 9})),
                  "c628\r\n" + told);
        EXPECT_EQ(utf8FromText(uploadLog(bench.state.texts, step)), "> 1B 01\r\n< " + log);
    }
    EXPECT_TRUE(uploadVerdict(bench.state.texts, {UploadEnd::lineBusy, {}}).empty());
}

} // namespace
} // namespace karvo
