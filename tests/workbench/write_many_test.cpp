#include "support/write_bench.h"
#include "workbench/change_value.h"
#include "workbench/describe.h"
#include "workbench/offline_list.h"
#include "workbench/write_many.h"

namespace karvo::test
{

using enum WriteEnd;
using Ends = std::vector<std::optional<WriteEnd>>;
using Progress = std::vector<std::pair<int, std::size_t>>;

class WriteManyTest : public testing::Test, protected WriteBench
{
protected:
    // Reads a vehicle and sets these CVs to 200; writes them while it and the person answer so.
    void write(const std::vector<int>& cvs, const std::string& answers)
    {
        readAndChange(cvs);
        writeAgain(answers);
    }
    void readAndChange(const std::vector<int>& cvs)
    {
        readKv05();
        for (const int cv : cvs)
            changeValue(bench, cv, 200);
        journal.clear();
    }
    void writeAgain(const std::string& answers)
    {
        script(answers);
        report = writeChanged(bench, keep);
    }
    static std::string writes(int count) { return count == 0 ? "" : writes(count - 1) + " 15 + +"; }
    Ends ends() const
    {
        Ends each;
        for (const WriteOutcome& outcome : report.outcomes)
            each.push_back(outcome.end);
        return each;
    }
    std::string status() const { return journal.size() < 2 ? std::string() : journal[journal.size() - 2]; }
    bool isMarked(int cv) const { return state.set.list[*positionOf(state.set.list, cv)].changed; }

    WriteReport report;
};

TEST_F(WriteManyTest, MeetsTheVehicleKeepsItsBlockAndWritesWhatDiffersInItsOrder)
{
    state.link.noticeAfterWrite = true; // the report tells it instead
    write({48, 29, 2}, "15 15 B" + writes(3));
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(tailOf(journal, "list changed, status 3 of 3 written, idle"),
              "list changed, status 3 of 3 written, idle");
    EXPECT_EQ(passed(), "% % ER kept % EWS 2=200 % EWS 48=200 % EWS 29=200");
    EXPECT_EQ(view.writeProgress, (Progress{{2, 2}, {48, 1}, {29, 0}, {0, 0}}));
    EXPECT_FALSE(isMarked(48) || state.link.manyUnderWay);
    EXPECT_EQ(kept[0].table.value(48), blockValue(48));
}

TEST_F(WriteManyTest, ChangedMeansOtherThanTheVehicleHolds)
{
    write({48, 49}, "15 15 B48=200,50=0" + writes(2)); // the vehicle's values have changed meanwhile
    EXPECT_EQ(passed(), "% % ER kept % EWS 49=200 % EWS 50=94");
    EXPECT_FALSE(isMarked(48));
    writeAgain("15 15 B48=200,49=200"); // and now it holds all
    EXPECT_EQ(report.end, WriteManyEnd::nothingToWrite);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(tailOf(journal, "status nothing to write, list changed, idle"),
              "status nothing to write, list changed, idle");
    EXPECT_EQ(passed(), "% % ER");
}

TEST_F(WriteManyTest, APreparedListMarksWhatDiffers)
{
    showOfflineList(bench, "mnu_KV05");
    for (int cv = 1; cv <= 176; ++cv)
        state.set.table.setValue(cv, cv == 48 || cv == 49 ? cv - 37 : blockValue(cv));
    writeAgain("15 15 B 15 + + 15 + -");
    EXPECT_EQ(ends(), (Ends{written, frameRefused}));
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_FALSE(report.isClean());
    EXPECT_FALSE(isMarked(48));
    EXPECT_TRUE(isMarked(49));
    EXPECT_EQ(state.receiver.firmwareLevel, 3);
    EXPECT_TRUE(kept[0].offlineItem.empty());

    // A receiver fits the list of the XT module.
    addFile("CV_Standart_receiver.txt", smallDescription("Standard KV-XT", "Wort ", 250));
    ASSERT_TRUE(showOfflineList(bench, "mnu_karvo_xt_list"));
    for (int cv = 1; cv <= 250; ++cv)
        state.set.table.setValue(cv, blockValue(cv));
    writeAgain("80 80 B");
    EXPECT_EQ(report.end, WriteManyEnd::nothingToWrite);
    EXPECT_EQ(state.receiver.firmwareLevel, blockValue(72));
    EXPECT_EQ(writeValues(bench, {{248, 7}}, keep).end, WriteManyEnd::noReply);
    EXPECT_EQ(state.set.table.value(248), blockValue(248)) << "an order is no value that is held";
}

TEST_F(WriteManyTest, WithoutADecoderItsBlockOrAFileForItNothingIsWritten)
{
    const struct {
        const char* answers;
        WriteManyEnd end;
        const char* passed;
    } cases[] = {{"", WriteManyEnd::noReply, "% !"},
                 {"81", WriteManyEnd::unknownDecoder, "% ! !"}, // can not be written
                 {"15", WriteManyEnd::noReply, "% % !"},
                 {"15 15", WriteManyEnd::noReply, "% % ER !"},
                 {"15 15 D", WriteManyEnd::wrongCheckByte, "% % ER !"},
                 {"15 15 B", WriteManyEnd::backupFailed, "% % ER kept !"}};
    keepTrouble = u"read-only folder";
    for (const auto& [answers, end, before] : cases) {
        write({48}, answers);
        EXPECT_EQ(report.end, end) << before;
        EXPECT_EQ(report.countOf(written), 0u);
        EXPECT_EQ(passed(), before);
        EXPECT_TRUE(isMarked(48));
        EXPECT_EQ(state.image[48], blockValue(48));
    }
}

TEST_F(WriteManyTest, WhatSpeaksForTheLineEndsTheWriteAndTheRestStaysMarked)
{
    const std::pair<std::string, WriteEnd> cases[] = {
        {"", noReply},          {"15", noReply},     {"15 +", unacknowledged}, {"15 -", commandRefused},
        {"99", unknownDecoder}, {"16", otherDecoder}};
    for (const auto& [answers, end] : cases) {
        write({48, 49, 50}, "15 15 B 15 + + " + answers);
        EXPECT_EQ(report.end, WriteManyEnd::stoppedByFault);
        EXPECT_EQ(ends(), (Ends{written, end, std::nullopt}));
        EXPECT_FALSE(report.isClean() || isMarked(48) || state.lineBusy);
        EXPECT_TRUE(isMarked(49) && isMarked(50));
        EXPECT_EQ(count("message now 16, before 15"), end == otherDecoder ? 1u : 0u);
        EXPECT_EQ(status(), "status 1 of 3 written");
    }
}

TEST_F(WriteManyTest, ARefusedValueIsPassedOverAndTheThirdInARowEndsIt)
{
    write({48, 49, 50, 51, 52, 53, 54}, "15 15 B 15 + - 15 + - 15 + + 15 + - 15 + - 15 + -");
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByFault);
    EXPECT_EQ(ends(), (Ends{frameRefused, frameRefused, written, frameRefused, frameRefused, frameRefused,
                            std::nullopt}));
    EXPECT_FALSE(line.hasUnusedReplies());
}

// Stops before the CV, or, with CV 0, as soon as the block is read.
struct StoppingView : RecordingView {
    StoppingView(Journal& log, ProgramState& watched, int cv) : RecordingView(log), state(watched), at(cv) {}
    void showWriteProgress(int cv, std::size_t) override { state.stopRequested |= cv == at && cv != 0; }
    void showHourglass(bool) override { state.stopRequested |= at == 0; }
    ProgramState& state;
    int at;
};

TEST_F(WriteManyTest, ItCanBeStoppedBetweenTwoCvsAndWhileTheBlockIsRead)
{
    const std::pair<int, std::string> cases[] = {{49, "% % ER kept % EWS 48=200 % EWS 49=200"}, {0, "% %"}};
    for (const auto& [at, before] : cases) {
        StoppingView stopping(journal, state, at);
        readAndChange({48, 49, 50, 51});
        state.stopRequested = true; // left over from an earlier write
        Workbench stopped{state, line, line, prompts, stopping, files, settings};
        script("15 15 B" + writes(at == 0 ? 0 : 2));
        report = writeChanged(stopped, keep);
        EXPECT_EQ(report.end, WriteManyEnd::stoppedByUser);
        EXPECT_EQ(ends(), at == 0 ? Ends{} : (Ends{written, written, std::nullopt, std::nullopt}));
        EXPECT_EQ(passed(), before);
        EXPECT_EQ(isMarked(49), at == 0);
        EXPECT_TRUE(isMarked(50));
    }
}

TEST_F(WriteManyTest, TheSeriesIsWrittenWholeWithItsPausesAndOnlyAFailureAtItsEndEndsTheWrite)
{
    using namespace std::chrono_literals;
    readAndChange({169, 172});
    const auto before = line.now();
    writeAgain("15 15 B" + writes(6));
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(ends(), Ends(6, written));
    EXPECT_EQ(line.now() - before, 500ms);
    EXPECT_EQ(count("status c873 168 "), 1u);
    EXPECT_EQ(view.writeProgress, (Progress{{167, 5}, {172, 0}, {0, 0}}));

    write({169, 172}, "15 15 B 15 + + 15 -" + writes(4));
    EXPECT_EQ(ends(), (Ends{written, commandRefused, written, written, written, written}));
    EXPECT_FALSE(isMarked(169));

    readAndChange({169, 172});
    script("15 15 B" + writes(2) + " 15 +");
    line.replyInPieces({{0ms, {6}}, {50ms, {}}});
    line.refuseToOpenAgain({u"no such device", {}});
    line.close();
    writeAgain("");
    EXPECT_EQ(report.end, WriteManyEnd::ended);
    EXPECT_EQ(ends(), (Ends{written, written, written, ended, ended, std::nullopt}));
    EXPECT_EQ(count("message no such device"), 1u);
    EXPECT_EQ(count("end program"), 1u);
    EXPECT_TRUE(isMarked(172));
}

TEST_F(WriteManyTest, AllMeansAllButWhatTheDecoderDecides)
{
    readKv05();
    state.set.table.at(20, Column::factoryValue).clear();
    script("15 15 B" + writes(171));
    report = writeAll(bench, keep);
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(report.outcomes.size(), 175u); // CV153 has no value
    EXPECT_EQ(report.countOf(written), 171u);
    EXPECT_FALSE(line.hasUnusedReplies());
    EXPECT_EQ(count("status writing CV59"), 0u);
    EXPECT_EQ(report.outcomes.back().cv, 161);
    EXPECT_EQ(kept.size(), 1u);
    EXPECT_EQ(status(), "status 171 of 171 written");
}

TEST_F(WriteManyTest, WhatMayNotBeWrittenIsNoSuccess)
{
    readAndChange({48});
    state.set.table.at(48, Column::upperLimit) = u"100";
    writeAgain("15 15 B");
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_EQ(report.outcomes.at(0).skip, WriteSkip::outsideLimits);
    EXPECT_FALSE(report.isClean());
    EXPECT_EQ(status(), "status 0 of 1 written");
    EXPECT_TRUE(kept.empty());

    readAndChange({11, 12, 48}); // servo CVs that the model lacks are refused once
    state.set.table.at(11, Column::factoryValue).clear();
    state.set.table.at(12, Column::factoryValue).clear();
    writeAgain("15 15 B 15 + +");
    EXPECT_EQ(count("message m695"), 1u);
    EXPECT_EQ(report.outcomes[0].skip, WriteSkip::notUsed);
    EXPECT_EQ(report.outcomes[2].end, written);
    EXPECT_TRUE(isMarked(11));
    EXPECT_FALSE(report.isClean());
    EXPECT_EQ(status(), "status 1 of 3 written");
}

TEST_F(WriteManyTest, TheSpeedTableIsWrittenWholeOrNotAtAll)
{
    setTexts(state.texts, {{805, u"outside"}, {807, u"{1} to {2}: {3}"}, {809, u"all?"}}, {});
    for (const bool answer : {false, true}) {
        readAndChange({48, 71, 70, 90});
        for (const int cv : {70, 71})
            state.set.table.at(cv, Column::upperLimit) = u"168";
        writeAgain("15 15 B " + (answer ? "y" + writes(4) : "n" + writes(1)));
        EXPECT_EQ(count("question outside\r\n0 to 168: 27 = 200, 28 = 200\r\nall?"), 1u);
        const std::optional<WriteEnd> step = answer ? std::optional(written) : std::nullopt;
        EXPECT_EQ(ends(), (Ends{written, step, step, step})) << answer;
        EXPECT_EQ(report.outcomes[3].skip, answer ? WriteSkip::none : WriteSkip::otherSteps)
            << "CV90 is sound";
        EXPECT_EQ(report.isClean(), answer);
    }
}

TEST_F(WriteManyTest, ChosenCvsComeInTheirOrderAndTheirSuccessNeedsNoAcknowledgeOfTheRestart)
{
    readAndChange({48});
    script("15 15 B 15 + + 15 + -");
    report = writeChosen(bench, {161, 48}, keep);
    EXPECT_EQ(ends(), (Ends{written, unconfirmed}));
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(passed(), "% % ER kept % EWS 48=200 % EWS 161=103");
}

TEST_F(WriteManyTest, WithoutAListOrWithABusyLineNothingHappens)
{
    writeAgain("");
    EXPECT_EQ(report.end, WriteManyEnd::nothingToWrite);
    EXPECT_EQ(writeValues(bench, {{48, 3}}, keep).end, WriteManyEnd::nothingToWrite);
    readKv05();
    state.lineBusy = true;
    for (const auto& again :
         {writeChanged(bench, keep), writeAll(bench, keep), writeChosen(bench, {48}, keep),
          writeValues(bench, {{48, 3}}, keep), writeReset(bench, 1, keep)})
        EXPECT_EQ(again.end, WriteManyEnd::busy);
    EXPECT_EQ(state.set.table.value(48), blockValue(48));
    EXPECT_TRUE(journal.empty());
}

TEST(WriteReportTest, EachOutcomeHasItsWords)
{
    LanguageTables texts;
    numberEveryText(texts);
    const std::pair<WriteOutcome, const char*> cases[] = {
        {{5, 12, WriteSkip::none, written}, "CV5  = 12  c182"},
        {{161, 3, WriteSkip::none, unconfirmed}, "CV161 = 3  c183"},
        {{48, 0, WriteSkip::none, std::nullopt}, "CV48 = 0  c188"},
        {{48, 0, WriteSkip::notUsed, std::nullopt}, "CV48 = 0  c189"},
        {{59, 1, WriteSkip::none, refusedByUser}, "CV59 = 1  c192"},
        {{48, 0, WriteSkip::none, otherDecoder}, "CV48 = 0  c194"},
        {{48, 0, WriteSkip::outsideLimits, std::nullopt}, "CV48 = 0  c195"},
    };
    for (const auto& [outcome, expected] : cases)
        EXPECT_EQ(utf8FromText(outcomeLine(outcome, texts)), expected);
}

} // namespace karvo::test
