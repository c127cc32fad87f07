#include "workbench/write_run.h"

#include "support/write_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

constexpr auto ok = WriteEnd::written;
constexpr auto outside = WriteSkip::outsideLimits;

// Which CVs were sent when one of them is refused.
std::string sent(const WritePlan& plan, int refused)
{
    test::WriteBench bench;
    bench.readKv05();
    bench.answerMeeting();
    if (plan.front().cv == 11)
        bench.prompts.answer(true); // the list of a KV05 uses no servo CVs
    for (const PlannedWrite& write : plan) {
        if (write.skip == WriteSkip::none)
            bench.answerWrite({static_cast<std::uint8_t>(write.cv == refused ? 21 : 6)});
    }
    WriteGuard guard(bench.bench, bench.keep);
    const auto report = runPlan(bench.bench, plan, guard, RunKind::many);
    std::string text;
    for (const WriteOutcome& outcome : report.outcomes)
        text += outcome.end == ok ? std::to_string(outcome.cv) + " " : "";
    const bool anyLeftOut =
        std::any_of(report.outcomes.begin(), report.outcomes.end(), [](const WriteOutcome& outcome) {
            return outcome.skip == WriteSkip::addressUnconfirmed;
        });
    return text + (anyLeftOut ? "left out" : "") + (report.isClean() ? "clean" : "");
}

TEST(WriteRunTest, AnAddressIsPutToUseOnlyWhenAllOfItWasConfirmed)
{
    struct Case {
        WritePlan plan;
        int refused;
        const char* sent;
    };
    const Case cases[] = {
        {{{17, 1}, {18, 2}, {15, 3}, {16, 4}, {29, 32}, {21, 17}}, 0, "17 18 15 16 29 21 clean"},
        {{{17, 1}, {18, 2}, {15, 3}, {16, 4}, {29, 32}, {21, 17}}, 18, "17 15 16 left out"},
        {{{1, 5}, {3, 6}, {29, 0}}, 3, "1 left out"},
        {{{21, 17}, {48, 1}, {1, 5}, {29, 0}}, 48, "21 1 29 "},      // no part of an address
        {{{21, 17}, {1, 5}, {29, 0}}, 1, "21 left out"},             // CV21 came before
        {{{17, 192, outside}, {18, 2}, {29, 32}}, 0, "18 left out"}, // what the vehicle has stays there
        {{{3, 0, outside}, {1, 5}, {29, 0}}, 0, "1 29 "},            // no second address
        {{{3, 4, WriteSkip::notUsed}, {1, 5}, {29, 0}}, 0, "1 29 clean"},
        {{{11, 1}, {12, 2}, {248, 1}, {13, 3}, {14, 4}, {250, 1}}, 12, "11 13 14 250 left out"},
    };
    for (const Case& expected : cases)
        EXPECT_EQ(sent(expected.plan, expected.refused), expected.sent);
}

} // namespace
} // namespace karvo
