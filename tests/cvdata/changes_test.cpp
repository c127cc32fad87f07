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
    const std::tuple<int, TextView, bool> cases[] = {
        {105, u"8", true}, {5, u"007", false}, {1, u"", true}, {153, u"0", true}, {153, u"", false}};
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
    const std::tuple<const char*, const char*, bool, bool> cases[] = {{"", "", false, false},
                                                                      {"", "mnu_kv07", false, true},
                                                                      {"a.kvr", "", true, true},
                                                                      {"a.kvr", "mnu_open", true, true}};
    for (const auto& [path, offlineItem, unsavedAfterTakingBack, unsavedAfterWriting] : cases) {
        set.listPath = path;
        set.offlineItem = offlineItem;
        set.table.setValue(1, 7);
        startUnchanged(set);
        set.table.setValue(1, 201);
        noteChange(set);
        EXPECT_TRUE(set.unsavedChanges);
        takeBack(set, 1);
        EXPECT_EQ(set.unsavedChanges, unsavedAfterTakingBack) << path << offlineItem;
        set.table.setValue(1, 202);
        noteChange(set);
        markWritten(set, 1);
        EXPECT_EQ(set.unsavedChanges, unsavedAfterWriting) << path << offlineItem;
    }
}

TEST_F(ChangesTest, WhatTheDecoderHoldsIsNoLongerChangedAndStaysUnsavedInAFile)
{
    set.listPath = "bus.kvr";
    set.table.setValue(1, 200);
    set.table.setValue(5, 9);
    set.unsavedChanges = true;
    markWritten(set, 1);
    EXPECT_EQ(changedCvs(set), std::vector{5});
    EXPECT_TRUE(takeBackAll(set));
    EXPECT_EQ(set.table.value(1), 200);
    EXPECT_EQ(set.table.value(5), 7);
    EXPECT_TRUE(set.unsavedChanges);
    EXPECT_FALSE(takeBackAll(set));
    CvImage image{};
    image.fill(7); // CV153 too: the list has no value to write there
    image[1] = 201;
    measureAgainst(set, image);
    EXPECT_EQ(changedCvs(set), std::vector{1});
    takeBack(set, 1);
    EXPECT_EQ(set.table.value(1), 201);
}

} // namespace
} // namespace karvo
