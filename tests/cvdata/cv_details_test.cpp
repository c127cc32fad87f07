#include "cvdata/cv_details.h"
#include "cvdata/cv_use.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(CvDetailsTest, EachFieldComesFromItsColumnAndBitTextsAreLinesFromWeightOneUp)
{
    CvTable table;
    for (int column = 1; column <= 9; ++column)
        table.at(29, column) = textFromNumber(column);
    table.at(29, Column::bits) = u"1\r\n\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9";
    const auto details = cvDetails(table, 29);
    EXPECT_EQ(details.number, 29);
    EXPECT_EQ(details.value + details.name + details.lowerLimit + details.upperLimit + details.factoryValue +
                  details.explanation + details.values + details.advice,
              u"23456789");
    EXPECT_EQ(details.bits, (std::array<Text, 8>{u"1", u"", u"3", u"4", u"5", u"6", u"7", u"8"}));
    EXPECT_TRUE(details.isSetOfSwitches);
    EXPECT_FALSE(cvDetails(table, 58).isSetOfSwitches);
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

TEST(CvUseTest, MarksAreWordsOfTheirFieldAndNothingElseIsOne)
{
    const std::tuple<TextView, bool, bool, TextView> cases[] = {
        {u"", false, false, u""},
        {u"read-only", false, false, u""}, // another maker's field
        {u"3,from=240216", false, false, u""},
        {u"mark=", true, false, u""},
        {u"mark=read-only", true, true, u""},
        {u"mark=read-only-soon", true, false, u""},
        {u"mark=from=240216_neu", true, false, u"240216_neu"},
        {u"mark=new, from=010915 ,read-only", true, true, u"010915"},
    };
    for (const auto& [field, has, readOnly, from] : cases) {
        SCOPED_TRACE(utf8FromText(field));
        CvTable table;
        table.at(20, Column::marks) = field;
        EXPECT_EQ(hasMarks(table), has);
        EXPECT_EQ(isReadOnly(table, 20), readOnly);
        EXPECT_EQ(firstFirmwareOf(table, 20), from);
        EXPECT_TRUE(isReadOnly(table, 7) && isReadOnly(table, 8));
    }
}

} // namespace karvo
