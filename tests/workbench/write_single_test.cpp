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
};

TEST_F(WriteSingleTest, WritesTheCurrentCvsValueAndTakesItsMarkAway)
{
    readKv05();
    state.set.currentNumber = 48;
    changeValue(bench, 48, 200);
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200  changed");
    answerWrite();
    EXPECT_EQ(writeSingle(bench, keep), WriteEnd::written);
    EXPECT_EQ(journal,
              (Journal{"list changed", "busy", "kept 1", "status writing CV48", "write 37", "write 69 87 83",
                       "write 47 200 247", "status c873", "idle", "list changed"}));
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200");
    EXPECT_FALSE(state.set.unsavedChanges) << "the vehicle has it";
    EXPECT_FALSE(state.lineBusy);
}

TEST_F(WriteSingleTest, WhatFailedStaysMarked)
{
    readKv05();
    state.set.currentNumber = 48;
    changeValue(bench, 48, 200);
    answerWrite({21});
    EXPECT_EQ(writeSingle(bench, keep), WriteEnd::frameRefused);
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200  changed");
    EXPECT_EQ(writeSingle(bench, keep), WriteEnd::noReply);
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

TEST_F(WriteSingleTest, AListThatWasNeverReadCanBeWrittenSinglyAndHasNothingToKeep)
{
    showOfflineList(bench, "mnu_KV05");
    state.set.currentNumber = 48;
    answerWrite();
    EXPECT_EQ(writeSingle(bench, keep), WriteEnd::written);
    EXPECT_EQ(kept.size(), 0u);
}

TEST_F(WriteSingleTest, OnlyTheFirstWriteToAVehicleKeepsItsBlock)
{
    readKv05();
    state.set.currentNumber = 48;
    changeValue(bench, 48, 200);
    answerWrite();
    writeSingle(bench, keep);
    answerWrite();
    writeSingle(bench, keep);
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].table.value(48), blockValue(48)); // as it was in the vehicle
    EXPECT_EQ(kept[0].descriptionPath.filename(), "CV_Standart172_v1_5.txt");
    EXPECT_EQ(kept[0].profile.typeCode, 1);

    // The same vehicle again holds what was written; nothing new is to be kept.
    auto block = test::blockOf(512);
    block[47] = 200;
    block.back() = static_cast<std::uint8_t>(block.back() + 200 - blockValue(48));
    readKv05(block);
    state.set.currentNumber = 48;
    answerWrite();
    writeSingle(bench, keep);
    EXPECT_EQ(kept.size(), 1u);

    readKv05(test::blockOf(512)); // another one
    state.set.currentNumber = 48;
    answerWrite();
    writeSingle(bench, keep);
    EXPECT_EQ(kept.size(), 2u);
}

TEST_F(WriteSingleTest, WithoutABackupNothingIsWritten)
{
    readKv05();
    state.set.currentNumber = 48;
    keepTrouble = u"disk full";
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt);
    EXPECT_EQ(journal, (Journal{"busy", "kept 1", "message not kept: disk full", "idle"}));
    keepTrouble.reset();
    answerWrite();
    EXPECT_EQ(writeSingle(bench, keep), WriteEnd::written);
    EXPECT_EQ(kept.size(), 2u);
}

TEST_F(WriteSingleTest, WithoutTheDescriptionForTheBackupNothingIsWritten)
{
    readKv05();
    state.set.currentNumber = 48;
    files.content.clear();
    EXPECT_EQ(writeSingle(bench, keep), std::nullopt);
    EXPECT_EQ(journal[1], "message cannot open program/CV_Standart172_v1_5.txt\r\ninstall again");
    EXPECT_TRUE(kept.empty());
}

TEST_F(WriteSingleTest, TheResetAsksWritesCv59AndOffersARead)
{
    readKv05();
    prompts.answer(true);
    answerWrite();
    prompts.answer(false);
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::written);
    const Journal end(journal.end() - 5, journal.end());
    EXPECT_EQ(end, (Journal{"write 58 1 59", "status c873", "message m87", "idle", "question m686"}));

    prompts.answer(true);
    answerWrite();
    prompts.answer(true);
    line.replyWith({'1', '5'});
    line.replyWith(test::blockOf(512));
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::written);
    EXPECT_EQ(journal[journal.size() - 2], "status 176 CVs");
    EXPECT_EQ(kept.size(), 1u);
    state.set.currentNumber = 48;
    answerWrite();
    writeSingle(bench, keep);
    EXPECT_EQ(kept.size(), 2u); // after a reset nobody knows what is kept
}

TEST_F(WriteSingleTest, TheReadAfterAResetAsksBeforeChangesAreLost)
{
    test::setText(state.texts, 722, u"lose changes?");
    readKv05();
    changeValue(bench, 48, 200);
    prompts.answer(true);
    answerWrite();
    prompts.answer(true);
    prompts.answerSaveChanges(SaveChoice::cancel);
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::written);
    EXPECT_EQ(journal.back(), "save changes lose changes?");
    EXPECT_EQ(state.set.table.value(48), 200);
}

TEST_F(WriteSingleTest, ADeclinedOrUnsentResetOffersNoRead)
{
    prompts.answer(false);
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::refusedByUser);
    prompts.answer(true);
    EXPECT_EQ(resetDecoder(bench, keep), WriteEnd::noReply);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "question m686"), 0);
}

} // namespace
} // namespace karvo
