#include "cvdata/cv_use.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

TEST(CvUseTest, MarksAreWordsOfTheirFieldAndNothingElseIsOne)
{
    struct Case {
        TextView field;
        bool hasMarks;
        bool readOnly;
        TextView from;
    };
    const Case cases[] = {
        {u"", false, false, u""},
        {u"read-only", false, false, u""}, // another maker's field
        {u"3,from=240216", false, false, u""},
        {u"mark=", true, false, u""},
        {u"mark=read-only", true, true, u""},
        {u"mark=read-only-soon", true, false, u""},
        {u"mark=from=240216_neu", true, false, u"240216_neu"},
        {u"mark=new, from=010915 ,read-only", true, true, u"010915"},
    };
    for (const Case& c : cases) {
        CvTable table;
        table.at(20, Column::marks) = c.field;
        EXPECT_EQ(hasMarks(table), c.hasMarks) << utf8FromText(c.field);
        EXPECT_EQ(isReadOnly(table, 20), c.readOnly) << utf8FromText(c.field);
        EXPECT_EQ(firstFirmwareOf(table, 20), c.from) << utf8FromText(c.field);
        EXPECT_TRUE(isReadOnly(table, 7) && isReadOnly(table, 8));
    }
}

} // namespace
} // namespace karvo
