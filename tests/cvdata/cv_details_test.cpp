#include "cvdata/cv_details.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

TEST(CvDetailsTest, EachFieldComesFromItsColumn)
{
    CvTable table;
    for (int column = 1; column <= 10; ++column)
        table.at(29, column) = textFromNumber(column);
    const auto details = cvDetails(table, 29);
    EXPECT_EQ(details.number, 29);
    EXPECT_EQ(details.value, u"2");
    EXPECT_EQ(details.name, u"3");
    EXPECT_EQ(details.lowerLimit, u"4");
    EXPECT_EQ(details.upperLimit, u"5");
    EXPECT_EQ(details.factoryValue, u"6");
    EXPECT_EQ(details.explanation, u"7");
    EXPECT_EQ(details.values, u"8");
    EXPECT_EQ(details.advice, u"9");
    EXPECT_EQ(details.bits[0], u"10");
    EXPECT_TRUE(details.isSetOfSwitches);
}

TEST(CvDetailsTest, BitTextsAreLinesFromWeightOneUp)
{
    CvTable table;
    table.at(57, Column::bits) = u"eins\r\n\r\nvier";
    const auto bits = cvDetails(table, 57).bits;
    EXPECT_EQ(bits[0], u"eins");
    EXPECT_EQ(bits[1], u"");
    EXPECT_EQ(bits[2], u"vier");
    EXPECT_EQ(bits[7], u"");
    table.at(57, Column::bits) = u"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9";
    EXPECT_EQ(cvDetails(table, 57).bits[7], u"8");
    EXPECT_FALSE(cvDetails(table, 58).isSetOfSwitches);
}

TEST(CvDetailsTest, NumbersBeyondTheTableHaveNoDetails)
{
    const CvTable table;
    for (const int cv : {-1, 0, 257, 100000})
        EXPECT_EQ(cvDetails(table, cv).number, 0) << cv;
}

TEST(BitBoxesTest, SumOfTheWeightsAndBack)
{
    EXPECT_EQ(valueOfBits({}), 0);
    EXPECT_EQ(valueOfBits({true, false, true, false, false, false, false, true}), 133);
    for (int value = 0; value <= 255; ++value)
        EXPECT_EQ(valueOfBits(bitsOfValue(value)), value);
}

} // namespace
} // namespace karvo
