#include "support/write_bench.h"
#include "workbench/change_value.h"
#include "workbench/write_single.h"

namespace karvo::test
{

class WriteSingleTest : public testing::Test, protected WriteBench
{
protected:
    void readAndChange48()
    {
        readKv05();
        state.set.currentNumber = 48;
        changeValue(bench, 48, 200);
        journal.clear();
    }
    std::optional<WriteEnd> write(const std::string& answers)
    {
        script(answers);
        return writeSingle(bench, keep);
    }
    std::optional<WriteEnd> reset(const std::string& answers)
    {
        script(answers);
        return resetDecoder(bench, keep);
    }
};

TEST_F(WriteSingleTest, MeetsTheVehicleKeepsItsBlockAndWritesTheCurrentCvsValue)
{
    readAndChange48();
    state.set.table.setValue(49, 17); // the read that comes first does not touch the list
    EXPECT_EQ(write("15 15 B 15 + +"), WriteEnd::written);
    EXPECT_EQ(
        joined(journal),
        "busy, write 37, hourglass, write 37, hourglass, write 69 82, no hourglass, kept 1, "
        "status writing CV48, write 37, write 69 87 83, write 47 200 247, status c873, list changed, idle");
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200");
    EXPECT_EQ(state.set.table.value(49), 17);
    EXPECT_EQ(kept[0].table.value(48), blockValue(48));
    EXPECT_EQ(kept[0].profile.typeCode, 1);
    EXPECT_FALSE(state.lineBusy);
}

TEST_F(WriteSingleTest, WhatFailedStaysMarkedAndWithoutABackupNothingIsWritten)
{
    readAndChange48();
    EXPECT_EQ(write("15 15 B 15 + -"), WriteEnd::frameRefused);
    EXPECT_EQ(write(""), std::nullopt);
    readAndChange48();
    state.keptBlock.reset();
    keepTrouble = u"disk full";
    EXPECT_EQ(write("15 15 B"), std::nullopt);
    EXPECT_EQ(tailOf(journal, "kept 2, message not kept: disk full, idle"),
              "kept 2, message not kept: disk full, idle");
    files.content.clear(); // nor without the description for it
    EXPECT_EQ(write("15 15 B"), std::nullopt);
    EXPECT_EQ(journal[journal.size() - 2],
              "message cannot open program/CV_Standart172_v1_5.txt\r\ninstall again");
    EXPECT_EQ(kept.size(), 2u);
    EXPECT_EQ(state.set.list[47].text, u"CV48 = 200  changed");
}

TEST_F(WriteSingleTest, WithoutACvOrAValueNothingIsSent)
{
    readKv05();
    for (const int cv : {0, 153, 200, 257}) {
        state.set.currentNumber = cv;
        EXPECT_EQ(write(""), std::nullopt) << cv;
    }
    state.set.currentNumber = 48;
    state.lineBusy = true;
    EXPECT_EQ(write(""), std::nullopt);
    EXPECT_TRUE(journal.empty());
}

TEST_F(WriteSingleTest, TheResetAsksWritesCv59AndOffersARead)
{
    setText(state.texts, 722, u"lose changes?");
    readAndChange48();
    EXPECT_EQ(reset("y 15 15 B 15 + + n"), WriteEnd::written);
    EXPECT_EQ(journal.back(), "question m686");
    EXPECT_EQ(passed(), "? % % ER kept % EWS 59=1 ! ?");
    prompts.answerSaveChanges(SaveChoice::cancel); // changes are not lost without a question
    EXPECT_EQ(reset("y 15 15 B 15 + + y"), WriteEnd::written);
    EXPECT_EQ(journal.back(), "save changes lose changes?");
    EXPECT_EQ(state.set.table.value(48), 200);
    prompts.answerSaveChanges(SaveChoice::discard);
    EXPECT_EQ(reset("y 15 15 B 15 + + y 15 B"), WriteEnd::written);
    EXPECT_EQ(tailOf(journal, "status 176 CVs, idle"), "status 176 CVs, idle");
}

TEST_F(WriteSingleTest, ADeclinedOrUnsentResetOffersNoRead)
{
    EXPECT_EQ(reset("n"), WriteEnd::refusedByUser);
    EXPECT_EQ(passed(), "?");
    EXPECT_EQ(reset("y"), std::nullopt);
    EXPECT_EQ(passed(), "? % !");
}

} // namespace karvo::test
