#include "cvdata/changes.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

class ChangesTest : public testing::Test
{
protected:
    ChangesTest()
    {
        for (const int cv : {1, 5, 70, 71, 97, 98, 105, 153}) {
            set.table.at(cv, Column::number) = textFromNumber(cv);
            set.table.setValue(cv, 7);
        }
        set.table.at(153, Column::value).clear();
        startUnchanged(set);
    }

    CvSet set;
};

TEST_F(ChangesTest, OnlyAnotherValueIsAChangeAndItGoesAgain)
{
    const struct {
        int cv;
        TextView value;
        bool isChange;
    } cases[] = {{105, u"8", true}, {5, u"007", false}, {1, u"", true}, {153, u"0", true}, {153, u"", false}};
    for (const auto& [cv, value, isChange] : cases) {
        const Text before = std::exchange(set.table.at(cv, Column::value), Text(value));
        EXPECT_EQ(isChanged(set, cv), isChange) << cv;
        EXPECT_EQ(changedCvs(set), isChange ? std::vector{cv} : std::vector<int>());
        EXPECT_EQ(takeBack(set, cv), isChange);
        EXPECT_EQ(set.table.at(cv, Column::value), isChange ? before : value);
    }
}

TEST_F(ChangesTest, WithoutABaselineAndBeyondTheTableNothingIsChanged)
{
    for (const int cv : {-1, 0, 257, 1111}) {
        EXPECT_FALSE(isChanged(set, cv));
        markWritten(set, cv);
    }
    set.baseline.reset();
    set.table.setValue(1, 200);
    EXPECT_FALSE(isChanged(set, 1));
    EXPECT_FALSE(takeBackAll(set));
    markWritten(set, 1);
    EXPECT_FALSE(set.baseline);
}

TEST_F(ChangesTest, WhatWasNeverAFileIsUnsavedOnlyWhileItDiffers)
{
    const struct {
        const char* path;
        const char* offlineItem;
        bool unsavedAfterTakingBack;
        bool unsavedAfterWriting;
    } cases[] = {{"", "", false, false},
                 {"", "mnu_kv07", false, true},
                 {"a.kvr", "", true, true},
                 {"a.kvr", "mnu_open", true, true}};
    for (const auto& expected : cases) {
        set.listPath = expected.path;
        set.offlineItem = expected.offlineItem;
        set.table.setValue(1, 7);
        startUnchanged(set);
        set.table.setValue(1, 201);
        noteChange(set);
        EXPECT_TRUE(set.unsavedChanges);
        takeBack(set, 1);
        EXPECT_EQ(set.unsavedChanges, expected.unsavedAfterTakingBack)
            << expected.path << expected.offlineItem;
        set.table.setValue(1, 202);
        noteChange(set);
        markWritten(set, 1);
        EXPECT_EQ(set.unsavedChanges, expected.unsavedAfterWriting) << expected.path << expected.offlineItem;
    }
}

TEST_F(ChangesTest, WhatIsWrittenIsNoLongerChangedAndStaysUnsaved)
{
    set.listPath = "bus.kvr";
    set.table.setValue(1, 200);
    set.table.setValue(5, 9);
    set.unsavedChanges = true;
    markWritten(set, 1);
    EXPECT_EQ(changedCvs(set), (std::vector<int>{5}));
    EXPECT_TRUE(takeBackAll(set));
    EXPECT_EQ(set.table.value(1), 200);
    EXPECT_EQ(set.table.value(5), 7);
    EXPECT_TRUE(set.unsavedChanges);
    EXPECT_FALSE(takeBackAll(set));
}

TEST_F(ChangesTest, ADecodersBlockShowsWhatItStillLacks)
{
    CvImage image{};
    image[1] = 7;
    image[5] = 9;
    image[70] = image[71] = image[97] = image[98] = image[105] = 7;
    image[153] = 44; // the list has no value to write there
    measureAgainst(set, image);
    EXPECT_EQ(changedCvs(set), (std::vector<int>{5}));
    takeBack(set, 5);
    EXPECT_EQ(set.table.value(5), 9);
}

} // namespace
} // namespace karvo
