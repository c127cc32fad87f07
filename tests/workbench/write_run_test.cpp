#include "workbench/write_run.h"

#include "support/write_bench.h"

namespace karvo::test
{

// Which CVs were sent when one of them is refused.
static std::string sent(const WritePlan& plan, int refused)
{
    WriteBench bench;
    bench.readKv05();
    bench.script("15 15 B");
    if (plan.front().cv == 11)
        bench.prompts.answer(true); // the list of a KV05 uses no servo CVs
    for (const PlannedWrite& write : plan) {
        if (write.skip == WriteSkip::none)
            bench.script(write.cv == refused ? "15 + -" : "15 + +");
    }
    WriteGuard guard(bench.bench, bench.keep);
    const auto report = runPlan(bench.bench, plan, guard, RunKind::many);
    std::string text;
    std::string leftOut;
    for (const WriteOutcome& outcome : report.outcomes) {
        text += outcome.end == WriteEnd::written ? std::to_string(outcome.cv) + " " : "";
        leftOut = outcome.skip == WriteSkip::addressUnconfirmed ? "left out" : leftOut;
    }
    return text + leftOut + (report.isClean() ? "clean" : "");
}

TEST(WriteRunTest, AnAddressIsPutToUseOnlyWhenAllOfItWasConfirmed)
{
    constexpr auto outside = WriteSkip::outsideLimits;
    const struct {
        WritePlan plan;
        int refused;
        const char* sent;
    } cases[] = {
        {{{17, 1}, {18, 2}, {15, 3}, {16, 4}, {29, 32}, {21, 17}}, 0, "17 18 15 16 29 21 clean"},
        {{{17, 1}, {18, 2}, {15, 3}, {16, 4}, {29, 32}, {21, 17}}, 18, "17 15 16 left out"},
        {{{1, 5}, {3, 6}, {29, 0}}, 3, "1 left out"},
        {{{21, 17}, {48, 1}, {1, 5}, {29, 0}}, 48, "21 1 29 "},      // no part of an address
        {{{21, 17}, {1, 5}, {29, 0}}, 1, "21 left out"},             // CV21 came before
        {{{17, 192, outside}, {18, 2}, {29, 32}}, 0, "18 left out"}, // what the vehicle has stays there
        {{{3, 0, outside}, {1, 5}, {29, 0}}, 0, "1 29 "},            // no second address
        {{{3, 4, WriteSkip::notUsed}, {1, 5}, {29, 0}}, 0, "1 29 clean"},
        {{{17, 1, WriteSkip::unticked, 5}, {18, 2}, {29, 32, WriteSkip::none, 0}}, 0, "18 left out"},
        {{{17, 1, WriteSkip::unticked, 5}, {18, 2}, {29, 32, WriteSkip::none, 32}}, 0, "18 29 clean"},
        {{{16, 4, WriteSkip::unticked, 5}, {21, 17, WriteSkip::none, 16}}, 0, "21 clean"}, // as it was
        {{{16, 4, WriteSkip::unticked, 5}, {21, 2, WriteSkip::none, 16}}, 0, "left out"},
        {{{11, 1}, {12, 2}, {248, 1}, {13, 3}, {14, 4}, {250, 1}}, 12, "11 13 14 250 left out"},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(sent(expected.plan, expected.refused), expected.sent);
}

} // namespace karvo::test
