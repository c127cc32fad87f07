#include "workbench/write_plan.h"

#include "link/write.h"

#include <gtest/gtest.h>

#include <map>

namespace karvo::test
{

using Cvs = std::vector<int>;
using Skips = std::map<int, WriteSkip>;

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
    void differ(const Cvs& cvs)
    {
        block.fill(7);
        for (const int cv : cvs)
            block[static_cast<std::size_t>(cv)] = 8;
    }
    WritePlan differences() const { return planOfDifferences(table, block); }
    static Cvs cvsOf(const WritePlan& plan)
    {
        Cvs cvs;
        for (const PlannedWrite& write : plan)
            cvs.push_back(write.cv);
        return cvs;
    }
    static Skips skipsOf(const WritePlan& plan)
    {
        Skips skips;
        for (const PlannedWrite& write : plan) {
            if (write.skip != WriteSkip::none)
                skips[write.cv] = write.skip;
        }
        return skips;
    }

    CvTable table;
    CvImage block{};
};

TEST_F(WritePlanTest, OnlyWhatDiffersFromTheBlock)
{
    EXPECT_TRUE(differences().empty());
    differ({48, 49, 50, 51, 201});       // the last is not described
    table.at(49, Column::value).clear(); // no value to write
    table.at(50, Column::value) = u"256";
    table.at(51, Column::value) = u"nonsense";
    for (const TextView factory : {u"3", u""}) { // without any factory value nothing counts as unused
        for (int cv = 1; cv <= 200; ++cv)
            table.at(cv, Column::factoryValue) = factory;
        const auto plan = differences();
        ASSERT_EQ(cvsOf(plan), Cvs{48});
        EXPECT_EQ(plan[0].value, 7);
        EXPECT_EQ(plan[0].skip, WriteSkip::none);
        EXPECT_EQ(plan[0].held, 8);
    }
}

TEST_F(WritePlanTest, AddressesThenCv29ThenCv161ComeLastAndOfChosenOnesTheResetFirst)
{
    differ({1, 2, 3, 4, 15, 16, 17, 18, 19, 21, 28, 29, 30, 160, 161, 162});
    EXPECT_EQ(cvsOf(differences()), (Cvs{2, 4, 19, 28, 30, 160, 162, 1, 3, 15, 16, 17, 18, 29, 21, 161}));
    const auto plan = planOfChosen(table, {1, 7, 59, 48, 201, 48});
    EXPECT_EQ(cvsOf(plan), (Cvs{59, 7, 48, 1}));
    EXPECT_TRUE(skipsOf(plan).empty()) << "whatever they are";
}

TEST_F(WritePlanTest, OneOfTheSeriesBringsAllFive)
{
    differ({169});
    EXPECT_EQ(cvsOf(differences()), (Cvs{167, 168, 169, 170, 171}));
    EXPECT_TRUE(skipsOf(differences()).empty());
    table.at(170, Column::upperLimit) = u"6";
    EXPECT_EQ(skipsOf(differences()).at(169), WriteSkip::withSeries);
    table.at(170, Column::upperLimit).clear();
    EXPECT_EQ(cvsOf(restOf(planOfAll(table, block), {48, 171})), (Cvs{48, 167, 168, 169, 170, 171}));
    EXPECT_EQ(cvsOf(planOfChosen(table, {171, 48})), (Cvs{48, 167, 168, 169, 170, 171}));
    table.at(170, Column::value).clear();
    EXPECT_EQ(cvsOf(differences()), Cvs{169});
    describe(170, u"7", u"");
    EXPECT_EQ(cvsOf(differences()), Cvs{169});
}

TEST_F(WritePlanTest, WhatMustNotBeWrittenIsLeftOutWithItsReason)
{
    describe(20, u"7", u"");
    table.at(30, Column::upperLimit) = u"6";
    table.at(31, Column::lowerLimit) = u"8";
    table.at(32, Column::upperLimit) = u"7";
    const Skips expected = {{7, WriteSkip::decodersOwn},    {8, WriteSkip::decodersOwn},
                            {20, WriteSkip::notUsed},       {59, WriteSkip::reset},
                            {30, WriteSkip::outsideLimits}, {31, WriteSkip::outsideLimits}};
    EXPECT_EQ(skipsOf(planOfAll(table, block)), expected);
    EXPECT_EQ(planOfAll(table, block).size(), 200u);
    block.fill(9);
    EXPECT_EQ(skipsOf(differences()), expected);
}

TEST_F(WritePlanTest, WhatALeftOutPartOfAnAddressHoldsBackIsHeldBackInTheRestToo)
{
    differ({17, 18, 29, 30});
    table.at(17, Column::upperLimit) = table.at(30, Column::upperLimit) = u"6";
    EXPECT_EQ(cvsOf(restOf(differences(), {18, 29})), (Cvs{17, 18, 29}));
}

TEST_F(WritePlanTest, AReceiverIsNotWrittenWhatItsFirmwareLacks)
{
    table.at(43, Column::marks) = u"mark=from=240216";
    DecoderProfile vehicle{.typeCode = firstReceiverTypeCode, .firmwareDate = {2015, 9, 1}};
    differ({43, 48});
    const auto skips = [&] {
        auto plan = differences();
        leaveOutWhatItLacks(plan, table, vehicle);
        return skipsOf(plan);
    };
    EXPECT_EQ(skips(), (Skips{{43, WriteSkip::notUsed}}));
    vehicle.firmwareDate = {2016, 2, 24};
    EXPECT_EQ(skips(), Skips{});
    vehicle.firmwareDate = {}; // not known
    EXPECT_EQ(skips(), Skips{});
}

TEST_F(WritePlanTest, ServoCvsThatTheModelLacksAreNoticed)
{
    for (const int cv : {10, 11, 12, 13, 14, 15}) {
        describe(cv, u"7", u"");
        differ({});
        EXPECT_FALSE(lacksPlannedServoCv(differences()));
        differ({cv});
        EXPECT_EQ(lacksPlannedServoCv(differences()), cv != 10 && cv != 15) << cv;
        describe(cv, u"7");
        EXPECT_FALSE(lacksPlannedServoCv(differences()));
    }
}

TEST_F(WritePlanTest, AChangedServoAddressOfAReceiverIsAlsoPutToUse)
{
    differ({12, 13});
    EXPECT_EQ(cvsOf(differences()), (Cvs{12, 13})); // the model has no CV248
    describe(248, u"0", u"0");
    block[248] = 0;
    describe(250, u"", u""); // of newer receivers only
    EXPECT_EQ(cvsOf(differences()), (Cvs{12, 13, 248}));
    EXPECT_EQ(differences().back().value, takeOverValue);
    block[12] = 7;
    EXPECT_EQ(cvsOf(restOf(differences(), {248})), Cvs{248});
}

} // namespace karvo::test
