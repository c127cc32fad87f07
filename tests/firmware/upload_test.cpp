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

HexImage image(std::size_t lines)
{
    return std::get<HexImage>(parseHexImage(test::bytesOf(test::hexFile(lines))));
}

struct UploadBench : test::TestBench, UploadObserver {
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

TEST(UploadTest, SendsEveryMessageInItsOrderWithRisingSequence)
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

TEST(UploadTest, OpensThePortAnewAndTheNextExchangeOpensItWithItsOwnSettings)
{
    UploadBench bench;
    bench.line.open();
    bench.answer(23);
    const auto report = bench.upload(9);
    EXPECT_EQ(report.end, UploadEnd::sent);
    EXPECT_EQ(report.steps.size(), 23U);
    EXPECT_EQ(bench.shown[19].phase, UploadPhase::erase);
    EXPECT_EQ(bench.shown[22].phase, UploadPhase::pages);
    EXPECT_EQ(bench.shown[22].page, 2U);
    EXPECT_EQ(bench.shown[22].pages, 2U);
    EXPECT_TRUE(bench.line.isOpen());
    const std::string begin = "open 0, busy, close, settings 115200 n 1, open 1, write 27 1 0 1 14 1 20, ";
    EXPECT_EQ(test::joined(bench.journal).substr(0, begin.size()), begin);
    bench.journal.clear();
    Link link = bench.bench.link();
    EnsurePortOpen(link);
    EnsurePortOpen(link);
    EXPECT_EQ(test::joined(bench.journal), "close, settings 4800 n 1, open 1");
}

TEST(UploadTest, ASilentLoaderCostsATimeOutEachAndNothingElse)
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

TEST(UploadTest, StopsBeforeTheNextMessageOrBeforeTheFirst)
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

} // namespace
} // namespace karvo
