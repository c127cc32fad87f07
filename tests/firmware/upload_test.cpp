#include "firmware/upload.h"

#include "link/exchange.h"
#include "support/hex_file.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::Journal;

class Watcher : public UploadObserver
{
public:
    void showUpload(const UploadProgress& progress) override { shown.push_back(progress); }
    void showStep(const UploadStep& step) override { replies.push_back(step.reply); }
    void showSilence(EraseState erase) override { silences.emplace_back(replies.size(), erase); }
    bool stopRequested() override { return shown.size() == stopAfter; }

    std::vector<UploadProgress> shown;
    std::vector<Bytes> replies;
    std::vector<std::pair<std::size_t, EraseState>> silences; // behind so many messages
    std::size_t stopAfter = 0;
};

class UploadTest : public testing::Test, public test::TestBench
{
protected:
    UploadTest() { test::setText(state.texts, 853, u"line lost"); }

    HexImage image(std::size_t lines)
    {
        return std::get<HexImage>(parseHexImage(test::bytesOf(test::hexFile(lines))));
    }

    void answerAll(std::size_t messages)
    {
        for (std::size_t i = 0; i < messages; ++i)
            line.replyWith(Bytes(17, 0)); // long enough for every wait
    }

    Watcher watcher;
};

TEST_F(UploadTest, SendsEveryMessageInItsOrderWithRisingSequence)
{
    const auto plan = uploadPlan(image(9));
    std::string tokens;
    for (std::size_t i = 0; i < plan.size(); ++i) {
        EXPECT_EQ(plan[i].bytes[1], i + 1);
        tokens += std::to_string(plan[i].bytes[5]) + "/" + std::to_string(plan[i].expectedReply) + " ";
    }
    EXPECT_EQ(tokens,
              "1/17 3/9 3/9 3/9 3/9 3/9 3/9 3/9 3/9 3/9 3/9 2/8 2/8 16/8 26/10 24/10 24/10 17/8 24/10 "
              "18/10 17/8 19/8 19/8 ");
    const Bytes parameters = {0x9A, 0x90, 0x91, 0x92, 0x9A, 0x98, 0x90, 0x9A, 0x90, 0x9F};
    for (std::size_t i = 0; i < parameters.size(); ++i)
        EXPECT_EQ(plan[i + 1].bytes[6], parameters[i]);
    for (const std::size_t leave : {17U, 20U}) {
        EXPECT_EQ(plan[leave].bytes.size(), 10U);
        EXPECT_EQ(plan[leave].bytes[8], 0x9F);
    }
    EXPECT_EQ(plan[16].bytes[8], 0x08); // the high fuse
    EXPECT_EQ(plan[18].bytes[7], 0x50); // the extended fuse
}

TEST_F(UploadTest, OpensThePortAnewAndLeavesItOpenAndTheNextExchangeOpensItWithItsOwnSettings)
{
    line.open();
    answerAll(22);
    const auto report = uploadImage(bench, image(1), watcher);
    EXPECT_EQ(report.end, UploadEnd::sent);
    EXPECT_EQ(report.steps.size(), 22U);
    EXPECT_TRUE(line.isOpen());
    EXPECT_EQ(journal[1], "busy");
    EXPECT_EQ(journal[2], "close");
    EXPECT_EQ(journal[3], "settings 115200 n 1");
    EXPECT_EQ(journal[4], "open 1");
    EXPECT_EQ(journal[5], "write 27 1 0 1 14 1 20");
    journal.clear();
    Link link = bench.link();
    EnsurePortOpen(link);
    EXPECT_EQ(journal, (Journal{"close", "settings 4800 n 1", "open 1"}));
    EnsurePortOpen(link);
    EXPECT_EQ(journal.size(), 3U);
}

TEST_F(UploadTest, ASilentLoaderCostsATimeOutEachAndNothingElse)
{
    const auto report = uploadImage(bench, image(1), watcher);
    EXPECT_EQ(report.end, UploadEnd::sent);
    EXPECT_FALSE(report.anyReply());
    EXPECT_EQ(line.now(), 22 * 5000ms);
    EXPECT_EQ(watcher.silences, (std::vector{std::pair{std::size_t{3}, EraseState::untouched}}));
    watcher = {};
    answerAll(1); // then three that count: programming mode, erase and the page
    uploadImage(bench, image(1), watcher);
    EXPECT_EQ(watcher.silences, (std::vector{std::pair{std::size_t{22}, EraseState::mayBeErased}}));
}

TEST_F(UploadTest, APulledAdapterEndsItWithOneMessage)
{
    answerAll(3);
    line.replyInPieces({{0ms, {}}});
    const auto report = uploadImage(bench, image(1), watcher);
    EXPECT_EQ(report.end, UploadEnd::lineLost);
    EXPECT_EQ(report.steps.size(), 4U);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "message line lost"), 1);
    EXPECT_FALSE(state.lineBusy);
}

TEST_F(UploadTest, StopsBeforeTheNextMessageButNotBehindTheLast)
{
    for (const auto& [after, end] : {std::pair{5U, UploadEnd::stopped}, {22U, UploadEnd::sent}}) {
        watcher = {};
        answerAll(after);
        watcher.stopAfter = after;
        const auto report = uploadImage(bench, image(1), watcher);
        EXPECT_EQ(report.end, end);
        EXPECT_EQ(report.steps.size(), after);
    }
}

TEST_F(UploadTest, TellsPhaseAndPage)
{
    answerAll(23);
    uploadImage(bench, image(9), watcher);
    EXPECT_EQ(watcher.shown[19].phase, UploadPhase::erase);
    EXPECT_EQ(watcher.shown[22].phase, UploadPhase::pages);
    EXPECT_EQ(watcher.shown[22].page, 2U);
    EXPECT_EQ(watcher.shown[22].pages, 2U);
}

TEST_F(UploadTest, TellsEachReplyAsItComesAndTheOneThatIsCutOff)
{
    line.replyWith({1, 2});
    line.replyInPieces({{0ms, {}}});
    uploadImage(bench, image(1), watcher);
    EXPECT_EQ(watcher.replies, (std::vector<Bytes>{{1, 2}, {}}));
}

TEST_F(UploadTest, NothingIsSentWhileAnotherOperationHasTheLine)
{
    state.lineBusy = true;
    EXPECT_EQ(uploadImage(bench, image(1), watcher).end, UploadEnd::lineBusy);
    EXPECT_TRUE(journal.empty());
}

} // namespace
} // namespace karvo
