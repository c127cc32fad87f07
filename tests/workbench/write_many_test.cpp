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
using test::Journal;

class WriteManyTest : public testing::Test, protected test::WriteBench
{
protected:
    void change(std::vector<int> cvs)
    {
        for (const int cv : cvs)
            changeValue(bench, cv, 200);
        journal.clear();
    }
    WriteReport writeTheChanged() { return writeChanged(bench, keep); }
    static std::vector<std::optional<WriteEnd>> endsOf(const WriteReport& report)
    {
        std::vector<std::optional<WriteEnd>> ends;
        for (const WriteOutcome& outcome : report.outcomes)
            ends.push_back(outcome.end);
        return ends;
    }
    std::size_t count(const std::string& entry) const
    {
        return static_cast<std::size_t>(std::count(journal.begin(), journal.end(), entry));
    }
    bool isMarked(int cv) const { return state.set.list[*positionOf(state.set.list, cv)].changed; }
};

using Ends = std::vector<std::optional<WriteEnd>>;

TEST_F(WriteManyTest, StepsOfAWriteOfTheChangedCvs)
{
    state.link.noticeAfterWrite = true; // the report tells it instead
    readKv05();
    change({48, 29, 2});
    answerSaveRead();
    for (int i = 0; i < 3; ++i)
        answerWrite();
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(journal, (Journal{"busy",
                                "hourglass",
                                "write 37",
                                "hourglass",
                                "write 69 82",
                                "no hourglass",
                                "kept 1",
                                "status writing CV2",
                                "write 37",
                                "write 69 87 83",
                                "write 1 200 201",
                                "status c873",
                                "status writing CV48",
                                "write 37",
                                "write 69 87 83",
                                "write 47 200 247",
                                "status c873",
                                "status writing CV29",
                                "write 37",
                                "write 69 87 83",
                                "write 28 200 228",
                                "status c873",
                                "list changed",
                                "status 3 of 3 written",
                                "idle"}));
    EXPECT_EQ(view.writeProgress,
              (std::vector<std::pair<int, std::size_t>>{{2, 2}, {48, 1}, {29, 0}, {0, 0}}));
    EXPECT_FALSE(isMarked(48));
    EXPECT_FALSE(state.link.manyUnderWay);
    EXPECT_EQ(kept[0].table.value(48), blockValue(48));
}

TEST_F(WriteManyTest, ChangedMeansOtherThanTheVehicleHolds)
{
    readKv05();
    change({48, 49});
    Bytes block = blockOf(512); // meanwhile CV48 is 200 in the vehicle, and CV50 another
    block[47] = 200;
    block[49] = 0;
    block.back() = static_cast<std::uint8_t>(block.back() + 200 - blockValue(48) - blockValue(50));
    answerSaveRead(block);
    answerWrite();
    answerWrite();
    const auto report = writeTheChanged();
    ASSERT_EQ(report.outcomes.size(), 2u);
    EXPECT_EQ(report.outcomes[0].cv, 49);
    EXPECT_EQ(report.outcomes[1].cv, 50);
    EXPECT_EQ(report.outcomes[1].value, blockValue(50));
    EXPECT_FALSE(isMarked(48));
}

TEST_F(WriteManyTest, AVehicleThatHoldsAllAlreadyIsNotWritten)
{
    readKv05();
    answerSaveRead();
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::nothingToWrite);
    EXPECT_TRUE(report.isClean());
    EXPECT_TRUE(kept.empty());
    EXPECT_EQ(journal[journal.size() - 3], "status nothing to write");
}

TEST_F(WriteManyTest, APreparedListIdentifiesFirstAndMarksWhatDiffers)
{
    showOfflineList(bench, "mnu_KV05");
    for (int cv = 1; cv <= 176; ++cv)
        state.set.table.setValue(cv, blockValue(cv));
    state.set.table.setValue(48, 11);
    state.set.table.setValue(49, 12);
    journal.clear();
    line.replyWith({'1', '5'});
    answerSaveRead();
    answerWrite();
    answerWrite({21});
    const auto report = writeTheChanged();
    EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, WriteEnd::frameRefused}));
    EXPECT_EQ(report.end, WriteManyEnd::finished);
    EXPECT_FALSE(report.isClean());
    EXPECT_EQ(count("write 37"), 4u);
    EXPECT_FALSE(isMarked(48));
    EXPECT_TRUE(isMarked(49));
    EXPECT_EQ(state.receiver.firmwareLevel, 3);
    EXPECT_TRUE(kept[0].offlineItem.empty());
}

TEST_F(WriteManyTest, AListOfAnotherModelIsRefusedAndBothAreNamed)
{
    showOfflineList(bench, "mnu_KV05");
    line.replyWith({'2', '7'});
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::otherModel);
    EXPECT_EQ(journal[journal.size() - 2], "message list of KV05, vehicle KV07");
    EXPECT_EQ(writeAll(bench, keep).end, WriteManyEnd::otherModel);
    EXPECT_EQ(count("write 37"), 1u);
    EXPECT_EQ(count("write 69 82"), 0u);
}

TEST_F(WriteManyTest, AReceiverFitsTheListOfTheXtModule)
{
    addFile("CV_Standart_receiver.txt", test::smallDescription("Standard KV-XT", "Wort ", 100));
    ASSERT_TRUE(showOfflineList(bench, "mnu_karvo_xt_list"));
    for (int cv = 1; cv <= 100; ++cv)
        state.set.table.setValue(cv, blockValue(cv));
    line.replyWith({'8', '0'});
    line.replyWith({'8', '0'});
    line.replyWith(blockOf(512));
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::nothingToWrite);
    EXPECT_EQ(state.receiver.firmwareLevel, blockValue(72));
}

TEST_F(WriteManyTest, WithoutADecoderNothingIsRead)
{
    showOfflineList(bench, "mnu_KV05");
    journal.clear();
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::noReply);
    EXPECT_EQ(journal, (Journal{"busy", "open 1", "write 37", "close", "message no reply",
                                "status no reply status", "idle"}));
    line.replyWith({'8', '1'}); // can not be written
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::unknownDecoder);
    EXPECT_EQ(journal[journal.size() - 2], "message m572");
}

TEST_F(WriteManyTest, AFailedBlockReadWritesNothing)
{
    readKv05();
    change({48});
    line.replyWith({'1', '5'});
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::noReply);
    Bytes block = blockOf(512);
    ++block.back();
    answerSaveRead(block);
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::wrongCheckByte);
    EXPECT_EQ(count("write 69 87 83"), 0u);
    EXPECT_TRUE(isMarked(48));
    EXPECT_EQ(state.image[48], blockValue(48));
}

TEST_F(WriteManyTest, WithoutABackupNothingIsWritten)
{
    readKv05();
    change({48});
    answerSaveRead();
    keepTrouble = u"read-only folder";
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::backupFailed);
    EXPECT_EQ(endsOf(report), (Ends{std::nullopt}));
    EXPECT_EQ(count("message not kept: read-only folder"), 1u);
    EXPECT_EQ(count("write 69 87 83"), 0u);
    EXPECT_TRUE(isMarked(48));
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
        readKv05();
        change({48, 49, 50});
        answerSaveRead();
        answerWrite();
        for (const Bytes& reply : replies)
            line.replyWith(reply);
        const auto report = writeTheChanged();
        EXPECT_EQ(report.end, WriteManyEnd::stoppedByFault);
        EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, end, std::nullopt}));
        EXPECT_FALSE(report.isClean());
        EXPECT_FALSE(isMarked(48));
        EXPECT_TRUE(isMarked(49));
        EXPECT_TRUE(isMarked(50));
        EXPECT_FALSE(state.lineBusy);
        EXPECT_EQ(count("message now 16, before 15"), end == WriteEnd::otherDecoder ? 1u : 0u);
        EXPECT_EQ(journal[journal.size() - 2], "status 1 of 3 written");
    }
}

TEST_F(WriteManyTest, ARefusedValueIsPassedOverAndTheThirdInARowEndsIt)
{
    readKv05();
    change({48, 49, 50, 51, 52, 53, 54});
    answerSaveRead();
    for (const Bytes& reply : {Bytes{21}, Bytes{21}, Bytes{6}, Bytes{21}, Bytes{21}, Bytes{21}})
        answerWrite(reply);
    const auto report = writeTheChanged();
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByFault);
    EXPECT_EQ(endsOf(report),
              (Ends{WriteEnd::frameRefused, WriteEnd::frameRefused, WriteEnd::written, WriteEnd::frameRefused,
                    WriteEnd::frameRefused, WriteEnd::frameRefused, std::nullopt}));
    EXPECT_FALSE(line.hasUnusedReplies());
}

TEST_F(WriteManyTest, ItCanBeStoppedBetweenTwoCvs)
{
    class StopAt49 : public test::RecordingView
    {
    public:
        StopAt49(Journal& log, ProgramState& watched) : RecordingView(log), watched_(watched) {}
        void showWriteProgress(int cv, std::size_t) override { watched_.stopRequested |= cv == 49; }

    private:
        ProgramState& watched_;
    } stopping(journal, state);
    readKv05();
    change({48, 49, 50, 51});
    state.stopRequested = true; // left over from an earlier write
    Workbench stopped{state, line, line, prompts, stopping, files, settings};
    answerSaveRead();
    answerWrite();
    answerWrite();
    const auto report = writeChanged(stopped, keep);
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByUser);
    EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, WriteEnd::written, std::nullopt, std::nullopt}));
    EXPECT_FALSE(isMarked(49));
    EXPECT_TRUE(isMarked(50));
}

TEST_F(WriteManyTest, AStopWhileTheBlockIsReadWritesNothing)
{
    class StopAtOnce : public test::RecordingView
    {
    public:
        StopAtOnce(Journal& log, ProgramState& watched) : RecordingView(log), watched_(watched) {}
        void showHourglass(bool) override { watched_.stopRequested = true; }

    private:
        ProgramState& watched_;
    } stopping(journal, state);
    readKv05();
    change({48, 49});
    Workbench stopped{state, line, line, prompts, stopping, files, settings};
    answerSaveRead();
    const auto report = writeChanged(stopped, keep);
    EXPECT_EQ(report.end, WriteManyEnd::stoppedByUser);
    EXPECT_EQ(endsOf(report), (Ends{std::nullopt, std::nullopt}));
}

TEST_F(WriteManyTest, TheSeriesIsWrittenWholeWithItsPauses)
{
    using namespace std::chrono_literals;
    readKv05();
    change({169, 172});
    answerSaveRead();
    for (int i = 0; i < 6; ++i)
        answerWrite();
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
    readKv05();
    change({169, 172});
    answerSaveRead();
    answerWrite();
    line.replyWith({'1', '5'});
    line.replyWith({21});
    for (int i = 0; i < 4; ++i)
        answerWrite();
    EXPECT_EQ(endsOf(writeTheChanged()), (Ends{WriteEnd::written, WriteEnd::commandRefused, WriteEnd::written,
                                               WriteEnd::written, WriteEnd::written, WriteEnd::written}));
    EXPECT_FALSE(isMarked(169));

    readKv05();
    change({169, 172});
    answerSaveRead();
    answerWrite();
    answerWrite();
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
    answerSaveRead();
    for (int i = 0; i < 171; ++i)
        answerWrite();
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
    readKv05();
    state.set.table.at(11, Column::factoryValue).clear();
    state.set.table.at(12, Column::factoryValue).clear();
    change({11, 12, 48});
    answerSaveRead();
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
    readKv05();
    state.set.table.at(48, Column::upperLimit) = u"100";
    state.set.table.setValue(48, 200);
    journal.clear();
    answerSaveRead();
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
        readKv05();
        change({48, 71, 70, 90});
        for (const int cv : {70, 71})
            state.set.table.at(cv, Column::upperLimit) = u"168";
        answerSaveRead();
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

TEST_F(WriteManyTest, ChosenCvsAreWrittenWithoutAFurtherBlock)
{
    readKv05();
    change({48});
    answerWrite();
    answerWrite({21});
    const auto report = writeChosen(bench, {161, 48}, keep);
    EXPECT_EQ(endsOf(report), (Ends{WriteEnd::written, WriteEnd::unconfirmed}));
    EXPECT_TRUE(report.isClean());
    EXPECT_EQ(count("write 69 82"), 0u);
    EXPECT_EQ(count("kept 1"), 1u);
}

TEST_F(WriteManyTest, WithoutAListOrWithABusyLineNothingHappens)
{
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::nothingToWrite);
    readKv05();
    state.lineBusy = true;
    EXPECT_EQ(writeTheChanged().end, WriteManyEnd::busy);
    EXPECT_EQ(writeAll(bench, keep).end, WriteManyEnd::busy);
    EXPECT_EQ(writeChosen(bench, {48}, keep).end, WriteManyEnd::busy);
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
        {{48, 0, WriteSkip::none, WriteEnd::frameRefused}, "CV48 = 0  c184"},
        {{48, 0, WriteSkip::none, WriteEnd::commandRefused}, "CV48 = 0  c185"},
        {{48, 0, WriteSkip::none, WriteEnd::noReply}, "CV48 = 0  c186"},
        {{48, 0, WriteSkip::none, WriteEnd::unacknowledged}, "CV48 = 0  c187"},
        {{48, 0, WriteSkip::none, WriteEnd::ended}, "CV48 = 0  c188"},
        {{48, 0, WriteSkip::none, std::nullopt}, "CV48 = 0  c188"},
        {{48, 0, WriteSkip::notUsed, std::nullopt}, "CV48 = 0  c189"},
        {{7, 0, WriteSkip::decodersOwn, std::nullopt}, "CV7  = 0  c190"},
        {{59, 0, WriteSkip::reset, std::nullopt}, "CV59 = 0  c191"},
        {{59, 1, WriteSkip::none, WriteEnd::refusedByUser}, "CV59 = 1  c192"},
        {{99, 1, WriteSkip::none, WriteEnd::guarded}, "CV99 = 1  c193"},
        {{48, 0, WriteSkip::none, WriteEnd::unknownDecoder}, "CV48 = 0  c196"},
        {{48, 0, WriteSkip::none, WriteEnd::otherDecoder}, "CV48 = 0  c194"},
        {{48, 0, WriteSkip::outsideLimits, std::nullopt}, "CV48 = 0  c195"},
    };
    for (const auto& [outcome, expected] : cases)
        EXPECT_EQ(utf8FromText(outcomeLine(outcome, texts)), expected);
}

} // namespace
} // namespace karvo
