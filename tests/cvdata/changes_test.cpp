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
        set.profile.model = Model::kv07;
        for (const int cv : {1, 5, 70, 71, 97, 98, 105, 153})
            describe(cv, u"7");
        set.table.at(153, Column::value).clear();
        startUnchanged(set);
    }

    void describe(int cv, TextView value)
    {
        set.table.at(cv, Column::number) = textFromNumber(cv);
        set.table.at(cv, Column::value) = value;
    }
    std::vector<std::string> listTexts() const
    {
        std::vector<std::string> texts;
        for (const ListLine& line : fill_list1({set.table, set.profile, set.rawReply, u" (0..168) ", true,
                                                nullptr, Text(), &*set.baseline, u"geändert"}))
            texts.push_back(utf8FromText(line.text));
        return texts;
    }

    CvSet set;
};

TEST_F(ChangesTest, OnlyAnotherValueIsAChange)
{
    EXPECT_TRUE(changedCvs(set).empty());
    set.table.setValue(105, 8);
    set.table.at(5, Column::value) = u"007";
    set.table.setValue(1, 200);
    EXPECT_EQ(changedCvs(set), (std::vector<int>{1, 105}));
    EXPECT_TRUE(isChanged(set, 105));
    EXPECT_FALSE(isChanged(set, 5));
    set.table.setValue(105, 7);
    EXPECT_FALSE(isChanged(set, 105));
}

TEST_F(ChangesTest, AValueWhereThereWasNoneIsAChangeAndGoesAgain)
{
    set.table.setValue(153, 0);
    EXPECT_TRUE(isChanged(set, 153));
    EXPECT_TRUE(takeBack(set, 153));
    EXPECT_EQ(set.table.at(153, Column::value), u"");
    set.table.at(1, Column::value).clear();
    EXPECT_TRUE(isChanged(set, 1));
}

TEST_F(ChangesTest, WithoutABaselineAndBeyondTheTableNothingIsChanged)
{
    for (const int cv : {-1, 0, 257, 1111}) {
        EXPECT_FALSE(isChanged(set, cv));
        markWritten(set, cv);
        EXPECT_FALSE(takeBack(set, cv));
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
    struct Case {
        const char* path;
        const char* offlineItem;
        bool unsavedAfterTakingBack;
        bool unsavedAfterWriting;
    };
    for (const Case& expected : {Case{"", "", false, false},
                                 {"", "mnu_kv07", false, true},
                                 {"a.kvr", "", true, true},
                                 {"a.kvr", "mnu_open", true, true}}) {
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

TEST_F(ChangesTest, TheListMarksAChangeByAWordBehindTheValue)
{
    set.table.setValue(1, 200);
    set.table.setValue(97, 12);
    set.table.setValue(105, 8);
    const auto texts = listTexts();
    EXPECT_EQ(texts[0], "CV1  = 200  geändert");
    EXPECT_EQ(texts[1], "CV5  = 7");
    EXPECT_EQ(texts[2], "  1 = 12 (0..168)   geändert");
    EXPECT_EQ(texts[29], " 28 = 7 (0..168) ");
    EXPECT_EQ(texts[31], "CV105 = 8  geändert");
}

TEST_F(ChangesTest, TheGroupLineIsMarkedForAnyOfItsCvs)
{
    set.profile.model = Model::kv05;
    EXPECT_EQ(listTexts()[2], "CV70 - CV97 ");
    for (const int cv : {70, 71, 97}) {
        set.table.setValue(cv, 8);
        EXPECT_EQ(listTexts()[2], "CV70 - CV97   geändert") << cv;
        takeBackAll(set);
    }
    set.table.setValue(98, 8);
    EXPECT_EQ(listTexts()[2], "CV70 - CV97 ");
    EXPECT_EQ(listTexts()[3], "CV98 = 8  geändert");
}

} // namespace
} // namespace karvo
