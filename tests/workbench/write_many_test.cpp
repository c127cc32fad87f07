#include "support/write_bench.h"
#include "workbench/change_value.h"
#include "workbench/describe.h"
#include "workbench/offline_list.h"
#include "workbench/write_many.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::blockOf;
using test::blockWith;
using test::Journal;
using Ends = std::vector<std::optional<WriteEnd>>;

Ends endsOf(const WriteReport& report)
{
    Ends ends;
    for (const WriteOutcome& outcome : report.outcomes)
        ends.push_back(outcome.end);
    return ends;
}

class WriteManyTest : public testing::Test, protected test::WriteBench
{
protected:
    void readAndChange(const std::vector<int>& cvs)
    {
        readKv05();
        for (const int cv : cvs)
            changeValue(bench, cv, 200);
        journal.clear();
    }
    WriteReport writeTheChanged() { return writeChanged(bench, keep); }
    void answerWrites(int count)
    {
        for (int i = 0; i < count; ++i)
            answerWrite();
    }
    std::size_t count(const std::string& entry) const
    {
        return static_cast<std::size_t>(std::count(journal.begin(), journal.end(), entry));
    }
    bool isMarked(int cv) const { return state.set.list[*positionOf(state.set.list, cv)].changed; }
};

TEST_F(WriteManyTest, MeetsTheVehicleKeepsItsBlockAndWritesWhatDiffersInItsOrder)
{
    state.link.noticeAfterWrite = true; // the report tells it instead
    readAndChange({48, 29, 2});
    answerMeeting();
    answerWrites(3);
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(Journal(journal.end() - 3, journal.end()),
              (Journal{"list changed", "status 3 of 3 written", "idle"}));
    EXPECT_EQ(passed(), "% % ER kept % EWS 2=200 % EWS 48=200 % EWS 29=200");
    EXPECT_EQ(view.writeProgress,
              (std::vector<std::pair<int, std::size_t>>{{2, 2}, {48, 1}, {29, 0}, {0, 0}}));
    EXPECT_FALSE(isMarked(48));
    EXPECT_FALSE(state.link.manyUnderWay);
    EXPECT_EQ(kept[0].table.value(48), blockValue(48));
}

TEST_F(WriteManyTest, ChangedMeansOtherThanTheVehicleHolds)
{
    readAndChange({48, 49});
    answerMeeting(blockWith({{48, 200}, {50, 0}})); // the vehicle's values have changed meanwhile
    answerWrites(2);
    writeTheChanged();
    EXPECT_EQ(passed(), "% % ER kept % EWS 49=200 % EWS 50=94");
    EXPECT_FALSE(isMarked(48));

    answerMeeting(blockWith({{48, 200}, {49, 200}})); // and now it holds all
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::nothingToWrite);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(journal[journal.size() - 3], "status nothing to write");
    EXPECT_EQ(passed(), "% % ER");
}

TEST_F(WriteManyTest, APreparedListMarksWhatDiffers)
{
    showOfflineList(bench, "mnu_KV05");
    for (int cv = 1; cv <= 176; ++cv)
        state.set.table.setValue(cv, blockValue(cv));
    state.set.table.setValue(48, 11);
    state.set.table.setValue(49, 12);
    answerMeeting();
    answerWrite();
    answerWrite({21});
    const auto report = writeTheChanged();
    EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, WriteEnd::frameRefused}));
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_FALSE(report.isClean());
    EXPECT_FALSE(isMarked(48));
    EXPECT_TRUE(isMarked(49));
    EXPECT_EQ(state.receiver.firmwareLevel, 3);
    EXPECT_TRUE(kept[0].offlineItem.empty());
}

TEST_F(WriteManyTest, AReceiverFitsTheListOfTheXtModule)
{
    addFile("CV_Standart_receiver.txt", test::smallDescription("Standard KV-XT", "Wort ", 100));
    ASSERT_TRUE(showOfflineList(bench, "mnu_karvo_xt_list"));
    for (int cv = 1; cv <= 100; ++cv)
        state.set.table.setValue(cv, blockValue(cv));
    answerMeeting(blockOf(512), {'8', '0'});
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::nothingToWrite);
    EXPECT_EQ(state.receiver.firmwareLevel, blockValue(72));
}

TEST_F(WriteManyTest, WithoutADecoderItsBlockOrAFileForItNothingIsWritten)
{
    struct Case {
        std::vector<Bytes> replies;
        WriteManyEnd end;
        const char* passed;
    };
    Bytes damaged = blockOf(512);
    ++damaged.back();
    const Bytes kv05 = {'1', '5'};
    const Case cases[] = {{{}, WriteManyEnd::noReply, "% !"},
                          {{{'8', '1'}}, WriteManyEnd::unknownDecoder, "% ! !"}, // can not be written
                          {{kv05}, WriteManyEnd::noReply, "% % !"},
                          {{kv05, kv05}, WriteManyEnd::noReply, "% % ER !"},
                          {{kv05, kv05, damaged}, WriteManyEnd::wrongCheckByte, "% % ER !"},
                          {{kv05, kv05, blockOf(512)}, WriteManyEnd::backupFailed, "% % ER kept !"}};
    keepTrouble = u"read-only folder";
    for (const auto& [replies, end, before] : cases) {
        readAndChange({48});
        for (const Bytes& reply : replies)
            line.replyWith(reply);
        const auto report = writeTheChanged();
        EXPECT_EQ(report.end, end) << before;
        EXPECT_EQ(report.countOf(WriteEnd::written), 0u);
        EXPECT_EQ(passed(), before);
        EXPECT_TRUE(isMarked(48));
        EXPECT_EQ(state.image[48], blockValue(48));
    }
}

TEST_F(WriteManyTest, WhatSpeaksForTheLineEndsTheWriteAndTheRestStaysMarked)
{
    struct Case {
        std::vector<Bytes> replies; // to the second CV's write
        WriteEnd end;
    };
    const Case cases[] = {{{}, WriteEnd::noReply},
                          {{{'1', '5'}}, WriteEnd::noReply},
                          {{{'1', '5'}, {6}}, WriteEnd::unacknowledged},
                          {{{'1', '5'}, {21}}, WriteEnd::commandRefused},
                          {{{'9', '9'}}, WriteEnd::unknownDecoder},
                          {{{'1', '6'}}, WriteEnd::otherDecoder}};
    for (const auto& [replies, end] : cases) {
        readAndChange({48, 49, 50});
        answerMeeting();
        answerWrite();
        for (const Bytes& reply : replies)
            line.replyWith(reply);
        const auto report = writeTheChanged();
        EXPECT_EQ(report.end, WriteManyEnd::stoppedByFault);
        EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, end, std::nullopt}));
        EXPECT_FALSE(report.isClean());
        EXPECT_FALSE(isMarked(48));
        EXPECT_TRUE(isMarked(49) && isMarked(50));
        EXPECT_FALSE(state.lineBusy);
        EXPECT_EQ(count("message now 16, before 15"), end == WriteEnd::otherDecoder ? 1u : 0u);
        EXPECT_EQ(journal[journal.size() - 2], "status 1 of 3 written");
    }
}

TEST_F(WriteManyTest, ARefusedValueIsPassedOverAndTheThirdInARowEndsIt)
{
    readAndChange({48, 49, 50, 51, 52, 53, 54});
    answerMeeting();
    for (const Bytes& reply : {Bytes{21}, Bytes{21}, Bytes{6}, Bytes{21}, Bytes{21}, Bytes{21}})
        answerWrite(reply);
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByFault);
    EXPECT_EQ(endsOf(report),
              (Ends{WriteEnd::frameRefused, WriteEnd::frameRefused, WriteEnd::written, WriteEnd::frameRefused,
                    WriteEnd::frameRefused, WriteEnd::frameRefused, std::nullopt}));
    EXPECT_FALSE(line.hasUnusedReplies());
}

// Stops before the CV, or, with CV 0, as soon as the block is read.
class StoppingView : public test::RecordingView
{
public:
    StoppingView(Journal& log, ProgramState& watched, int cv) : RecordingView(log), watched_(watched), cv_(cv)
    {
    }
    void showWriteProgress(int cv, std::size_t) override { watched_.stopRequested |= cv == cv_ && cv != 0; }
    void showHourglass(bool) override { watched_.stopRequested |= cv_ == 0; }

private:
    ProgramState& watched_;
    int cv_;
};

TEST_F(WriteManyTest, ItCanBeStoppedBetweenTwoCvs)
{
    StoppingView stopping(journal, state, 49);
    readAndChange({48, 49, 50, 51});
    state.stopRequested = true; // left over from an earlier write
    Workbench stopped{state, line, line, prompts, stopping, files, settings};
    answerMeeting();
    answerWrites(2);
    const auto report = writeChanged(stopped, keep);
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByUser);
    EXPECT_EQ(report.outcomes[3].end, std::nullopt);
    EXPECT_EQ(passed(), "% % ER kept % EWS 48=200 % EWS 49=200");
    EXPECT_FALSE(isMarked(49));
    EXPECT_TRUE(isMarked(50));
}

TEST_F(WriteManyTest, AStopWhileTheBlockIsReadWritesNothing)
{
    StoppingView stopping(journal, state, 0);
    readAndChange({48, 49});
    Workbench stopped{state, line, line, prompts, stopping, files, settings};
    answerMeeting();
    const auto report = writeChanged(stopped, keep);
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByUser);
    EXPECT_TRUE(report.outcomes.empty());
}

TEST_F(WriteManyTest, TheSeriesIsWrittenWholeWithItsPauses)
{
    using namespace std::chrono_literals;
    readAndChange({169, 172});
    answerMeeting();
    answerWrites(6);
    const auto before = line.now();
    const auto report = writeTheChanged();
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(report.outcomes.size(), 6u);
    EXPECT_EQ(line.now() - before, 500ms);
    EXPECT_EQ(count("status c873 168 "), 1u);
    EXPECT_EQ(view.writeProgress, (std::vector<std::pair<int, std::size_t>>{{167, 5}, {172, 0}, {0, 0}}));
}

TEST_F(WriteManyTest, AFailureInsideTheSeriesDoesNotEndTheWriteOneAtItsEndDoes)
{
    readAndChange({169, 172});
    answerMeeting();
    answerWrite();
    line.replyWith({'1', '5'});
    line.replyWith({21});
    answerWrites(4);
    EXPECT_EQ(endsOf(writeTheChanged()), (Ends{WriteEnd::written, WriteEnd::commandRefused, WriteEnd::written,
                                               WriteEnd::written, WriteEnd::written, WriteEnd::written}));
    EXPECT_FALSE(isMarked(169));

    readAndChange({169, 172});
    answerMeeting();
    answerWrites(2);
    line.replyWith({'1', '5'});
    line.replyWith({6});
    line.replyInPieces({{std::chrono::milliseconds(0), {6}}, {std::chrono::milliseconds(50), {}}});
    line.refuseToOpenAgain({u"no such device", {}});
    line.close();
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::ended);
    EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, WriteEnd::written, WriteEnd::written, WriteEnd::ended,
                                    WriteEnd::ended, std::nullopt}));
    EXPECT_EQ(count("message no such device"), 1u);
    EXPECT_EQ(count("end program"), 1u);
    EXPECT_TRUE(isMarked(172));
}

TEST_F(WriteManyTest, AllMeansAllButWhatTheDecoderDecides)
{
    readKv05();
    state.set.table.at(20, Column::factoryValue).clear();
    answerMeeting();
    answerWrites(171);
    const auto report = writeAll(bench, keep);
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(report.outcomes.size(), 175u); // CV153 has no value
    EXPECT_EQ(report.countOf(WriteEnd::written), 171u);
    EXPECT_FALSE(line.hasUnusedReplies());
    EXPECT_EQ(count("status writing CV59"), 0u);
    EXPECT_EQ(report.outcomes.back().cv, 161);
    EXPECT_EQ(kept.size(), 1u);
    EXPECT_EQ(journal[journal.size() - 2], "status 171 of 171 written");
}

TEST_F(WriteManyTest, ServoCvsThatTheModelLacksAreRefusedOnceAndTheOthersWritten)
{
    readAndChange({11, 12, 48});
    state.set.table.at(11, Column::factoryValue).clear();
    state.set.table.at(12, Column::factoryValue).clear();
    answerMeeting();
    answerWrite();
    const auto report = writeTheChanged();
    EXPECT_EQ(count("message m695"), 1u);
    EXPECT_EQ(report.outcomes[0].skip, WriteSkip::notUsed);
    EXPECT_EQ(report.outcomes[2].end, WriteEnd::written);
    EXPECT_TRUE(isMarked(11));
    EXPECT_FALSE(report.isClean());
    EXPECT_EQ(journal[journal.size() - 2], "status 1 of 3 written");
}

TEST_F(WriteManyTest, WhatMayNotBeWrittenIsNoSuccess)
{
    readAndChange({48});
    state.set.table.at(48, Column::upperLimit) = u"100";
    answerMeeting();
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    ASSERT_EQ(report.outcomes.size(), 1u);
    EXPECT_EQ(report.outcomes[0].skip, WriteSkip::outsideLimits);
    EXPECT_FALSE(report.isClean());
    EXPECT_EQ(journal[journal.size() - 2], "status 0 of 1 written");
    EXPECT_TRUE(kept.empty());
}

TEST_F(WriteManyTest, TheSpeedTableIsWrittenWholeOrNotAtAll)
{
    test::setText(state.texts, 805, u"outside");
    test::setText(state.texts, 807, u"{1} to {2}: {3}");
    test::setText(state.texts, 809, u"all?");
    for (const bool answer : {false, true}) {
        readAndChange({48, 71, 70, 90});
        for (const int cv : {70, 71})
            state.set.table.at(cv, Column::upperLimit) = u"168";
        answerMeeting();
        for (int i = 0; i < (answer ? 4 : 1); ++i)
            answerWrite();
        prompts.answer(answer);
        const auto report = writeTheChanged();
        EXPECT_EQ(count("question outside\r\n0 to 168: 27 = 200, 28 = 200\r\nall?"), 1u);
        const std::optional<WriteEnd> step = answer ? std::optional(WriteEnd::written) : std::nullopt;
        EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, step, step, step})) << answer;
        EXPECT_EQ(report.outcomes[3].skip, answer ? WriteSkip::none : WriteSkip::otherSteps)
            << "CV90 is sound";
        EXPECT_EQ(report.isClean(), answer);
    }
}

TEST_F(WriteManyTest, ChosenCvsComeInTheirOrderAndTheirSuccessNeedsNoAcknowledgeOfTheRestart)
{
    readAndChange({48});
    answerMeeting();
    answerWrite();
    answerWrite({21});
    const auto report = writeChosen(bench, {161, 48}, keep);
    EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, WriteEnd::unconfirmed}));
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(passed(), "% % ER kept % EWS 48=200 % EWS 161=103");
}

TEST_F(WriteManyTest, WithoutAListOrWithABusyLineNothingHappens)
{
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::nothingToWrite);
    readKv05();
    state.lineBusy = true;
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::busy);
    EXPECT_EQ(writeAll(bench, keep).end, WriteManyEnd::busy);
    EXPECT_EQ(writeChosen(bench, {48}, keep).end, WriteManyEnd::busy);
    EXPECT_EQ(writeValues(bench, {{48, 3}}, keep).end, WriteManyEnd::busy);
    EXPECT_EQ(state.set.table.value(48), blockValue(48));
    EXPECT_TRUE(journal.empty());
}

TEST(WriteReportTest, EachOutcomeHasItsWords)
{
    LanguageTables texts;
    for (int number = 182; number <= 196; ++number)
        test::setCaption(texts, number, u"c" + textFromNumber(number));
    struct Case {
        WriteOutcome outcome;
        const char* line;
    };
    const Case cases[] = {
        {{5, 12, WriteSkip::none, WriteEnd::written}, "CV5  = 12  c182"},
        {{161, 3, WriteSkip::none, WriteEnd::unconfirmed}, "CV161 = 3  c183"},
        {{48, 0, WriteSkip::none, std::nullopt}, "CV48 = 0  c188"},
        {{48, 0, WriteSkip::notUsed, std::nullopt}, "CV48 = 0  c189"},
        {{59, 1, WriteSkip::none, WriteEnd::refusedByUser}, "CV59 = 1  c192"},
        {{48, 0, WriteSkip::none, WriteEnd::otherDecoder}, "CV48 = 0  c194"},
        {{48, 0, WriteSkip::outsideLimits, std::nullopt}, "CV48 = 0  c195"},
    };
    for (const auto& [outcome, expected] : cases)
        EXPECT_EQ(utf8FromText(outcomeLine(outcome, texts)), expected);
}

} // namespace
} // namespace karvo
