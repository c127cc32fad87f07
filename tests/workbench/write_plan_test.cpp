#include "workbench/write_plan.h"

#include "link/write.h"

#include <gtest/gtest.h>

#include <map>

namespace karvo
{
namespace
{

class WritePlanTest : public testing::Test
{
protected:
    WritePlanTest()
    {
        for (int cv = 1; cv <= 200; ++cv)
            describe(cv, u"7");
        block.fill(7);
    }

    void describe(int cv, TextView value, TextView factory = u"3")
    {
        table.at(cv, Column::number) = textFromNumber(cv);
        table.at(cv, Column::value) = value;
        table.at(cv, Column::factoryValue) = factory;
    }
    static std::vector<int> cvsOf(const WritePlan& plan)
    {
        std::vector<int> cvs;
        for (const PlannedWrite& write : plan)
            cvs.push_back(write.cv);
        return cvs;
    }
    static std::map<int, WriteSkip> skipsOf(const WritePlan& plan)
    {
        std::map<int, WriteSkip> skips;
        for (const PlannedWrite& write : plan) {
            if (write.skip != WriteSkip::none)
                skips[write.cv] = write.skip;
        }
        return skips;
    }

    CvTable table;
    CvImage block{};
};

TEST_F(WritePlanTest, WithoutAnyFactoryValueNothingCountsAsUnused)
{
    for (int cv = 1; cv <= 200; ++cv)
        describe(cv, u"7", u"");
    block[48] = 8;
    const auto plan = planOfDifferences(table, block);
    ASSERT_EQ(cvsOf(plan), (std::vector<int>{48}));
    EXPECT_EQ(plan[0].skip, WriteSkip::none);
}

TEST_F(WritePlanTest, OnlyWhatDiffersFromTheBlock)
{
    EXPECT_TRUE(planOfDifferences(table, block).empty());
    block[48] = 8;
    block[201] = 8; // not described
    table.at(49, Column::value).clear();
    block[49] = 8; // no value to write
    table.at(50, Column::value) = u"256";
    table.at(51, Column::value) = u"nonsense";
    const auto plan = planOfDifferences(table, block);
    EXPECT_EQ(cvsOf(plan), (std::vector<int>{48}));
    EXPECT_EQ(plan[0].value, 7);
    EXPECT_EQ(plan[0].skip, WriteSkip::none);
    EXPECT_EQ(plan[0].held, 8);
}

TEST_F(WritePlanTest, AddressesThenCv29ThenCv161ComeLast)
{
    for (const int cv : {1, 2, 3, 4, 15, 16, 17, 18, 19, 28, 29, 30, 160, 161, 162})
        block[static_cast<std::size_t>(cv)] = 0;
    EXPECT_EQ(cvsOf(planOfDifferences(table, block)),
              (std::vector<int>{2, 4, 19, 28, 30, 160, 162, 1, 3, 15, 16, 17, 18, 29, 161}));
}

TEST_F(WritePlanTest, OneOfTheSeriesBringsAllFive)
{
    block[169] = 8;
    EXPECT_EQ(cvsOf(planOfDifferences(table, block)), (std::vector<int>{167, 168, 169, 170, 171}));
    EXPECT_TRUE(skipsOf(planOfDifferences(table, block)).empty());
    table.at(170, Column::upperLimit) = u"6";
    EXPECT_EQ(skipsOf(planOfDifferences(table, block)).at(169), WriteSkip::withSeries);
    table.at(170, Column::upperLimit).clear();
    EXPECT_EQ(cvsOf(restOf(planOfAll(table, block), {48, 171})),
              (std::vector<int>{48, 167, 168, 169, 170, 171}));
    EXPECT_EQ(cvsOf(planOfChosen(table, {171, 48})), (std::vector<int>{48, 167, 168, 169, 170, 171}));
    table.at(170, Column::value).clear();
    EXPECT_EQ(cvsOf(planOfDifferences(table, block)), (std::vector<int>{169}));
    describe(170, u"7", u"");
    EXPECT_EQ(cvsOf(planOfDifferences(table, block)), (std::vector<int>{169}));
}

TEST_F(WritePlanTest, WhatMustNotBeWrittenIsLeftOutWithItsReason)
{
    describe(20, u"7", u"");
    table.at(30, Column::upperLimit) = u"6";
    table.at(31, Column::lowerLimit) = u"8";
    table.at(32, Column::upperLimit) = u"7";
    const std::map<int, WriteSkip> expected = {
        {7, WriteSkip::decodersOwn}, {8, WriteSkip::decodersOwn},    {20, WriteSkip::notUsed},
        {59, WriteSkip::reset},      {30, WriteSkip::outsideLimits}, {31, WriteSkip::outsideLimits}};
    EXPECT_EQ(skipsOf(planOfAll(table, block)), expected);
    EXPECT_EQ(planOfAll(table, block).size(), 200u);
    block.fill(9);
    EXPECT_EQ(skipsOf(planOfDifferences(table, block)), expected);
}

TEST_F(WritePlanTest, ChosenCvsAreWrittenWhateverTheyAreTheResetFirst)
{
    const auto plan = planOfChosen(table, {1, 7, 59, 48, 201, 48});
    EXPECT_EQ(cvsOf(plan), (std::vector<int>{59, 7, 48, 1}));
    EXPECT_TRUE(skipsOf(plan).empty());
}

TEST_F(WritePlanTest, ServoCvsThatTheModelLacksAreNoticed)
{
    for (const int cv : {11, 12, 13, 14}) {
        describe(cv, u"7", u"");
        EXPECT_FALSE(lacksPlannedServoCv(planOfDifferences(table, block)));
        block[static_cast<std::size_t>(cv)] = 8;
        EXPECT_TRUE(lacksPlannedServoCv(planOfDifferences(table, block))) << cv;
        block[static_cast<std::size_t>(cv)] = 7;
        describe(cv, u"7");
    }
    describe(10, u"7", u"");
    block[10] = block[12] = 8;
    EXPECT_FALSE(lacksPlannedServoCv(planOfDifferences(table, block)));
}

TEST_F(WritePlanTest, AChangedServoAddressOfAReceiverIsAlsoPutToUse)
{
    block[12] = block[13] = 8;
    EXPECT_EQ(cvsOf(planOfDifferences(table, block)), (std::vector<int>{12, 13})); // the model has no CV248
    describe(248, u"0", u"0");
    block[248] = 0;
    describe(250, u"", u""); // of newer receivers only
    const auto plan = planOfDifferences(table, block);
    EXPECT_EQ(cvsOf(plan), (std::vector<int>{12, 13, 248}));
    EXPECT_EQ(plan.back().value, takeOverValue);
    block[12] = 7;
    EXPECT_EQ(cvsOf(restOf(planOfDifferences(table, block), {248})), (std::vector<int>{248}));
}

} // namespace
} // namespace karvo
