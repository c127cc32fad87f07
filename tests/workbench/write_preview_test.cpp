// What is asked and shown before a write, and told after it.
#include "support/write_bench.h"
#include "workbench/address_notice.h"
#include "workbench/change_value.h"
#include "workbench/write_many.h"
#include "workbench/write_preview.h"
#include "workbench/write_single.h"

namespace karvo::test
{

using enum WriteSkip;

class WritePreviewTest : public testing::Test, protected WriteBench
{
protected:
    WritePreviewTest()
    {
        setTexts(state.texts, {{445, u"beyond:"}, {446, u"all?"}, {807, u"steps {3}: {1} to {2}"}}, {});
        setTexts(state.texts, {},
                 {{195, u"beyond its limits"},
                  {276, u"{1} = {2}: {3} to {4}"},
                  {277, u"{1} = {2}: read only"},
                  {278, u"{1} = {2}: unused"},
                  {280, u"{1} more"},
                  {819, u"unticked"},
                  {827, u"left out: {1}"},
                  {823, u"kept: {1}"}});
        readKv05();
    }
    void setValues(const std::map<int, int>& values)
    {
        for (const auto& [cv, value] : values)
            state.set.table.setValue(cv, value);
    }
    static std::vector<int> cvsWith(const WriteReport& report, WriteSkip skip)
    {
        std::vector<int> cvs;
        for (const WriteOutcome& outcome : report.outcomes) {
            if (outcome.skip == skip)
                cvs.push_back(outcome.cv);
        }
        return cvs;
    }
};

TEST_F(WritePreviewTest, WhoGivesValuesBeyondTheLimitsIsAskedOnceBeforeAnythingIsSent)
{
    CvTable& table = state.set.table;
    table.at(3, Column::upperLimit) = u"126";
    table.at(20, Column::factoryValue).clear();
    for (const int cv : {70, 71, 73})
        table.at(cv, Column::upperLimit) = u"168";
    table.at(73, Column::lowerLimit) = u"5";
    const struct {
        WritePlan plan;
        std::string lines;  // of the question; empty: none comes
        std::string writes; // and before them the answer to the reset's own question
    } cases[] = {
        {{{3, 126}, {48, 255}, {59, 1}}, "", "15 + + 15 + +"},
        {{{3, 127}}, "CV3 = 127: 0 to 126", "15 + +"},
        {{{3, 200}, {7, 9}, {20, 1}, {48, 1}},
         "CV3 = 200: 0 to 126\r\nCV7 = 9: read only\r\nCV20 = 1: unused",
         "15 + + 15 + + 15 + + 15 + +"},
        {{{70, 180}, {71, 175}, {72, 1}, {73, 3}},
         "steps 27 = 175, 28 = 180: 0 to 168\r\nsteps 25 = 3: 5 to 168",
         "15 + + 15 + + 15 + + 15 + +"},
    };
    for (const auto& [plan, lines, writes] : cases) {
        for (const std::string answer : {"n", "y"}) {
            state.keptBlock.reset(); // so that the vehicle is met anew
            journal.clear();
            const bool isWritten = lines.empty() || answer == "y";
            script(lines.empty() ? "n" : answer);
            script(isWritten ? "15 15 B " + writes : "");
            const auto report = writeValues(bench, plan, keep);
            EXPECT_EQ(count("question beyond:\r\n" + lines + "\r\nall?"), lines.empty() ? 0U : 1U) << lines;
            EXPECT_EQ(report.end, isWritten ? WriteManyEnd::finished : WriteManyEnd::declined) << lines;
            EXPECT_EQ(count("write 37") != 0, isWritten) << lines;
            EXPECT_FALSE(line.hasUnusedReplies());
        }
    }
    state.set.currentNumber = 3;
    setValues({{3, 200}});
    script("n n");
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt);
    EXPECT_EQ(writeChosen(bench, {3}, keep).end, WriteManyEnd::declined);
}

TEST_F(WritePreviewTest, AWriteFromTheListLeavesThemOutUnlessItIsForced)
{
    state.set.table.at(170, Column::upperLimit) = u"9";
    setValues({{7, 1}, {48, 11}, {170, 12}});
    script("15 15 B 15 + +");
    const auto report = writeChanged(bench, keep);
    EXPECT_EQ(cvsWith(report, decodersOwn), std::vector<int>{7});
    EXPECT_EQ(cvsWith(report, outsideLimits), std::vector<int>{170});
    EXPECT_EQ(cvsWith(report, withSeries), (std::vector<int>{167, 168, 169, 171}));
    EXPECT_FALSE(report.isClean());
    script("15 15 B 15 + + 15 + + 15 + + 15 + + 15 + + 15 + + 15 + +");
    EXPECT_EQ(writeChanged(bench, keep, {.beyond = BeyondLimits::planned}).countOf(WriteEnd::written), 7U);
}

TEST_F(WritePreviewTest, ShowsWhatWillBeWrittenAndTakesTheTicks)
{
    setValues({{48, 11}, {49, 12}, {17, 3}, {169, 12}, {7, 1}});
    script("15 15 B");
    const auto cancelled = writeAll(bench, keep, {.confirm = [](auto&) { return PreviewAnswer::cancel; }});
    EXPECT_EQ(cancelled.end, WriteManyEnd::cancelled);
    EXPECT_EQ(passed(), "% % ER");
    script("15 15 B 15 + +");
    WritePreview shown;
    const auto report = writeChanged(bench, keep, {.confirm = [&](WritePreview& preview) {
                                         shown = preview;
                                         EXPECT_EQ(count("kept 1"), 0U);
                                         tick(preview, 1, false);
                                         tickVehiclesOwn(preview, false);
                                         return PreviewAnswer::write;
                                     }});
    ASSERT_EQ(shown.rows.size(), 9U);
    EXPECT_EQ(shown.rows[1].cv, 48);
    EXPECT_EQ(shown.rows[1].name, u"Wort 48");
    EXPECT_EQ(shown.rows[1].held, blockValue(48));
    EXPECT_EQ(shown.rows[1].value, 11);
    EXPECT_EQ(shown.countOfWritten(), 8U);
    EXPECT_TRUE(shown.otherVehicle);
    EXPECT_EQ(cvsWith(report, unticked), (std::vector<int>{48, 167, 168, 169, 170, 171, 17}));
    EXPECT_EQ(report.countOf(WriteEnd::written), 1U);
    EXPECT_EQ(report.outcomes[2].held, blockValue(49));
    EXPECT_EQ(report.backup, "lists/1.kvr");
    EXPECT_TRUE(report.isClean());
}

TEST_F(WritePreviewTest, AsksNoMoreUntilVehicleOrListIsAnother)
{
    int asked = 0;
    const ListWrite how{.confirm = [&](WritePreview& preview) {
        ++asked;
        for (std::size_t row = 0; row < preview.rows.size(); ++row) {
            if (preview.rows[row].cv == 49 || isOfThisVehicle(preview.rows[row].cv))
                tick(preview, row, false);
        }
        return PreviewAnswer::writeAndAskNoMore;
    }};
    const auto write = [&](const std::string& block) {
        script("15 15 " + block + " 15 + +");
        return writeChanged(bench, keep, how);
    };
    setValues({{1, 9}, {48, 11}, {49, 12}});
    write("B");
    setValues({{3, 9}, {50, 13}});
    EXPECT_EQ(cvsWith(write("B48=11"), unticked), (std::vector<int>{49, 1, 3}))
        << "what was left out stays out";
    EXPECT_EQ(asked, 1);
    state.set.listPath = "other.kvr";
    setValues({{51, 13}});
    write("B48=11,50=13");
    EXPECT_EQ(asked, 2);
    write("B48=11,50=13,51=12"); // another vehicle
    EXPECT_EQ(asked, 3);
}

TEST(WriteVoltageTest, ABatteryBelowTheWarningLevelIsNamed)
{
    ProgramState state;
    setCaption(state.texts, 816, u"{1} below {2}");
    CvSet set;
    set.table.at(153, Column::number) = u"153";
    set.table.at(153, Column::factoryValue) = u"165";
    const struct {
        Model model;
        int measured;
        Text text;
    } cases[] = {{Model::kv08, 164, u"3,28 below 3,30"},
                 {Model::kv08, 165, u""},
                 {Model::kv08, 0, u""},
                 {Model::kv05, 1, u""}};
    for (const auto& [model, measured, text] : cases) {
        CvImage block{};
        block[153] = 165;
        block[505] = static_cast<std::uint8_t>(measured);
        DecoderProfile vehicle;
        vehicle.model = model;
        EXPECT_EQ(lowBatteryText(previewOf({}, set, block, vehicle), state), text) << measured;
    }
}

TEST(AddressNoticeTest, TellsTheAddressWhereAWriteOfItDidNotComeToItsEnd)
{
    LanguageTables texts;
    setTexts(texts, {{449, u"now {1}"}, {450, u"now {1} or {2}"}, {451, u"unknown"}},
             {{46, u"short"}, {47, u"long"}, {281, u"{1} and {2}"}});
    CvImage image{};
    image[1] = 3;
    image[3] = 4;
    image[17] = 1;
    image[18] = 44;
    using enum WriteEnd;
    const auto outcome = [](int cv, int value, std::optional<WriteEnd> end) {
        return WriteOutcome{cv, value, none, end};
    };
    const auto unsent = std::nullopt;
    const struct {
        int cv21;
        int cv29;
        std::vector<WriteOutcome> outcomes;
        Text notice;
    } cases[] = {
        {0, 0, {outcome(1, 3, written)}, u""},
        {0, 0, {outcome(48, 3, frameRefused)}, u""},
        {0, 0, {outcome(48, 3, noReply), outcome(29, 32, unsent)}, u""},
        {0, 32, {outcome(18, 45, frameRefused)}, u"now 300 (long)"},
        {2, 0, {outcome(17, 1, written), outcome(29, 32, unsent)}, u"now 3 (short) and 4 (short)"},
        {0, 32, {outcome(18, 45, unacknowledged)}, u"now 300 (long) or 301 (long)"},
        {0, 0, {outcome(29, 32, unacknowledged)}, u"now 3 (short) or 300 (long)"},
    };
    for (const auto& [cv21, cv29, outcomes, notice] : cases) {
        image[21] = static_cast<std::uint8_t>(cv21);
        image[29] = static_cast<std::uint8_t>(cv29);
        const DecoderProfile vehicle;
        const HeldBlock held{image, vehicle};
        EXPECT_EQ(utf8FromText(addressNotice(outcomes, &held, texts)), utf8FromText(notice));
    }
    EXPECT_EQ(addressNotice({outcome(1, 3, noReply)}, nullptr, texts), u"unknown");
}

TEST_F(WritePreviewTest, TheReportNamesAllAndTheRestIsWhatIsStillToBeWritten)
{
    const auto outcome = [](int cv, std::optional<WriteEnd> end, WriteSkip skip = none) {
        return WriteOutcome{cv, 1, skip, end, cv == 1 ? std::nullopt : std::optional(2), u"name"};
    };
    WriteReport report{WriteManyEnd::stoppedByFault,
                       {outcome(48, WriteEnd::written), outcome(49, WriteEnd::frameRefused),
                        outcome(50, std::nullopt, outsideLimits), outcome(51, std::nullopt, outsideLimits),
                        outcome(52, std::nullopt, unticked), outcome(17, WriteEnd::frameRefused),
                        outcome(18, WriteEnd::unacknowledged), outcome(1, std::nullopt)}};
    report.addressNotice = u"now 3";
    report.backup = "a.kvr";
    EXPECT_EQ(report.rest(), (std::vector<int>{17, 18, 1}));
    const auto text = utf8FromText(reportText(report, state.texts));
    for (const char* const part :
         {"1 of 7 written\n",
          "left out: 3\n    2 \u00D7 beyond its limits\n    1 \u00D7 unticked\nnow 3\nkept: a.kvr\n",
          "CV48\tname\t2\t1\t", "CV1\tname\t---\t1\t"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    report.end = WriteManyEnd::finished;
    EXPECT_TRUE(report.rest().empty());
}

TEST_F(WritePreviewTest, ASpeedTableIsTickedAsAWhole)
{
    const WritePlan plan = {{48, 1}, {70, 9}, {97, 8}};
    const auto tickedAfter = [&](std::size_t row) {
        auto preview = previewOf(plan, state.set, CvImage{}, state.set.profile);
        tick(preview, row, false);
        return preview.countOfWritten();
    };
    EXPECT_EQ(tickedAfter(0), 2U);
    EXPECT_EQ(tickedAfter(1), 1U);
    state.set.table.at(80, Column::factoryValue).clear(); // then they are no speed table
    EXPECT_EQ(tickedAfter(1), 2U);
}

} // namespace karvo::test
