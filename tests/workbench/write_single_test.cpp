#include "support/write_bench.h"
#include "workbench/change_value.h"
#include "workbench/offline_list.h"
#include "workbench/write_single.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;

class WriteSingleTest : public testing::Test, protected test::WriteBench
{
protected:
    std::optional<WriteEnd> write(const Bytes& frameReply = {6})
    {
        answerMeeting();
        answerWrite(frameReply);
        return writeSingle(bench, keep);
    }
};

TEST_F(WriteSingleTest, MeetsTheVehicleKeepsItsBlockAndWritesTheCurrentCvsValue)
{
    readKv05();
    state.set.currentNumber = 48;
    changeValue(bench, 48, 200);
    state.set.table.setValue(49, 17); // the read that comes first does not touch the list
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200  changed");
    journal.clear();
    EXPECT_EQ(write(), WriteEnd::written);
    EXPECT_EQ(journal, (Journal{"busy", "write 37", "hourglass", "write 37", "hourglass", "write 69 82",
                                "no hourglass", "kept 1", "status writing CV48", "write 37", "write 69 87 83",
                                "write 47 200 247", "status c873", "list changed", "idle"}));
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200");
    EXPECT_EQ(state.set.table.value(49), 17);
    EXPECT_EQ(kept[0].table.value(48), blockValue(48));
    EXPECT_EQ(kept[0].profile.typeCode, 1);
    EXPECT_FALSE(state.lineBusy);
}

TEST_F(WriteSingleTest, WhatFailedStaysMarked)
{
    readKv05();
    state.set.currentNumber = 48;
    changeValue(bench, 48, 200);
    EXPECT_EQ(write({21}), WriteEnd::frameRefused);
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200  changed");
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt); // silence
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200  changed");
}

TEST_F(WriteSingleTest, WithoutACvOrAValueNothingIsSent)
{
    readKv05();
    for (const int cv : {0, 153, 200, 257}) {
        state.set.currentNumber = cv;
        EXPECT_EQ(writeSingle(bench, keep), std::nullopt) << cv;
    }
    state.set.currentNumber = 48;
    state.lineBusy = true;
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt);
    EXPECT_TRUE(journal.empty());
}

TEST_F(WriteSingleTest, WithoutABackupNothingIsWritten)
{
    readKv05();
    state.set.currentNumber = 48;
    keepTrouble = u"disk full";
    answerMeeting();
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt);
    EXPECT_EQ(Journal(journal.end() - 3, journal.end()),
              (Journal{"kept 1", "message not kept: disk full", "idle"}));
    files.content.clear(); // nor without the description for it
    answerMeeting();
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt);
    EXPECT_EQ(journal[journal.size() - 2],
              "message cannot open program/CV_Standart172_v1_5.txt\r\ninstall again");
    EXPECT_EQ(kept.size(), 1u);
}

TEST_F(WriteSingleTest, TheResetAsksWritesCv59AndOffersARead)
{
    test::setText(state.texts, 722, u"lose changes?");
    readKv05();
    changeValue(bench, 48, 200);
    prompts.answer(true);
    answerMeeting();
    answerWrite();
    prompts.answer(false);
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::written);
    EXPECT_EQ(journal.back(), "question m686");
    EXPECT_EQ(passed(), "? % % ER kept % EWS 59=1 ! ?");

    prompts.answer(true);
    answerMeeting();
    answerWrite();
    prompts.answer(true);
    prompts.answerSaveChanges(SaveChoice::cancel); // changes are not lost without a question
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::written);
    EXPECT_EQ(journal.back(), "save changes lose changes?");
    EXPECT_EQ(state.set.table.value(48), 200);

    prompts.answer(true);
    answerMeeting();
    answerWrite();
    prompts.answer(true);
    prompts.answerSaveChanges(SaveChoice::discard);
    line.replyWith({'1', '5'});
    line.replyWith(test::blockOf(512));
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::written);
    EXPECT_EQ(journal.back(), "idle");
    EXPECT_EQ(journal[journal.size() - 2], "status 176 CVs");
}

TEST_F(WriteSingleTest, ADeclinedOrUnsentResetOffersNoRead)
{
    prompts.answer(false);
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::refusedByUser);
    EXPECT_EQ(passed(), "?");
    prompts.answer(true);
    EXPECT_EQ(resetDecoder(bench, keep), std::nullopt);
    EXPECT_EQ(passed(), "? % !");
}

} // namespace
} // namespace karvo
