#include "support/test_bench.h"
#include "workbench/change_value.h"
#include "workbench/offline_list.h"
#include "workbench/take_entry.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;

class ChangeValueTest : public testing::Test, protected test::TestBench
{
protected:
    ChangeValueTest()
    {
        test::setCaption(state.texts, 25, u"not in the list");
        test::setCaption(state.texts, 161, u"changed");
        test::setText(state.texts, 682, u"CV{1} not {2}, {3} to {4}");
        test::setText(state.texts, 635, u"no CV{1}");
        test::setText(state.texts, 636, u"CV{1} empty, {2} to {3}");
        addFile("CV_Standart_kv07.txt",
                "Standard KV07\r\n1;3;a;1;126;3;\r\n2;4;b;;x;4;\r\n3;5;c;-5;900;5;\r\n");
        showOfflineList(bench, "mnu_kv07");
        journal.clear();
    }
};

TEST_F(ChangeValueTest, AChangeShowsInTheListAndTheCurrentCvStays)
{
    state.set.currentNumber = 3;
    EXPECT_FALSE(state.set.unsavedChanges);
    EXPECT_EQ(changeValue(bench, 1, 126), ChangeEnd::changed);
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 126  changed");
    EXPECT_TRUE(state.set.list[0].changed);
    EXPECT_FALSE(state.set.list[1].changed);
    EXPECT_EQ(state.set.currentNumber, 3);
    EXPECT_TRUE(state.set.unsavedChanges);
    EXPECT_EQ(journal, (Journal{"list changed"}));
}

TEST_F(ChangeValueTest, WhatIsTypedIsTakenOrRefusedWithOneMessage)
{
    using enum EntryEnd;
    const auto none = std::nullopt;
    const struct {
        TypedEntry typed;
        EntryEnd end;
        int current; // it was 2
        std::optional<const char*> message;
    } cases[] = {
        {{none, u"9"}, taken, 2, none},
        {{u"3", none}, taken, 3, none},
        {{u"1", u"9"}, taken, 1, none},
        {{u"", none}, taken, 2, none},
        {{u"0", u"8"}, taken, 2, none},
        {{u"4", u"9"}, numberRefused, 2, "message no CV4"},
        {{u"1", u"127"}, valueRefused, 1, "message CV1 not 127, 1 to 126"},
        {{none, u""}, valueRefused, 2, "message CV2 empty, 0 to 255"},
    };
    for (const auto& [typed, end, current, message] : cases) {
        showOfflineList(bench, "mnu_kv07");
        state.set.currentNumber = 2;
        journal.clear();
        EXPECT_EQ(canBeTaken(state.set, typed), end == taken);
        EXPECT_EQ(takeEntry(bench, typed), end);
        EXPECT_EQ(state.set.currentNumber, current);
        for (int cv = 1; cv <= 3; ++cv) {
            const bool changed = end == taken && typed.value && cv == current;
            EXPECT_EQ(state.set.table.at(cv, Column::value), changed ? *typed.value : textFromNumber(cv + 2));
        }
        std::erase(journal, "list changed");
        EXPECT_EQ(journal, message ? Journal{*message} : Journal{});
    }
    state.lineBusy = true;
    journal.clear();
    EXPECT_EQ(takeEntry(bench, {u"4", u"9"}), taken) << "no box over an operation";
    EXPECT_TRUE(journal.empty());
}

TEST_F(ChangeValueTest, TheSameValueIsNoChange)
{
    EXPECT_EQ(changeValue(bench, 1, u" 03 "), ChangeEnd::changed);
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 3");
    EXPECT_FALSE(state.set.unsavedChanges);
}

TEST_F(ChangeValueTest, LimitsAreNamedAndNothingChanges)
{
    struct Case {
        int cv;
        TextView typed;
        const char* message;
    };
    const Case cases[] = {{1, u"0", "CV1 not 0, 1 to 126"},      {1, u"127", "CV1 not 127, 1 to 126"},
                          {1, u"", "CV1 empty, 1 to 126"},       {1, u" 3,5 ", "CV1 not 3,5, 1 to 126"},
                          {1, u"-1", "CV1 not -1, 1 to 126"},    {2, u"256", "CV2 not 256, 0 to 255"},
                          {3, u"256", "CV3 not 256, 0 to 255"},  {3, u"-1", "CV3 not -1, 0 to 255"},
                          {2, u"0x10", "CV2 not 0x10, 0 to 255"}};
    for (const auto& [cv, typed, message] : cases) {
        EXPECT_EQ(changeValue(bench, cv, typed), ChangeEnd::outsideLimits);
        EXPECT_EQ(journal.back(), std::string("message ") + message);
    }
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 3");
    EXPECT_FALSE(state.set.unsavedChanges);
    EXPECT_EQ(changeValue(bench, 2, 255), ChangeEnd::changed);
    EXPECT_EQ(changeValue(bench, 3, 0), ChangeEnd::changed);
}

TEST_F(ChangeValueTest, OnlyCvsOfTheListCanBeChangedAndNoneWhileTheLineIsBusy)
{
    for (const int cv : {-1, 0, 4, 256, 257})
        EXPECT_EQ(changeValue(bench, cv, 1), ChangeEnd::notInList) << cv;
    EXPECT_EQ(journal.back(), "message not in the list");
    journal.clear();
    state.lineBusy = true;
    EXPECT_EQ(changeValue(bench, 1, 9), ChangeEnd::busy);
    state.set.table.setValue(1, 9);
    EXPECT_FALSE(takeBackValue(bench, 1));
    EXPECT_FALSE(takeBackAllValues(bench));
    EXPECT_TRUE(journal.empty());
    EXPECT_EQ(state.set.table.value(1), 9);
}

TEST_F(ChangeValueTest, TakingBackIsOneStepForOneAndForAll)
{
    for (const int cv : {1, 2, 3})
        changeValue(bench, cv, 77);
    EXPECT_TRUE(takeBackValue(bench, 2));
    EXPECT_EQ(state.set.list[1].text, u"CV2  = 4");
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 77  changed");
    EXPECT_FALSE(takeBackValue(bench, 2));
    EXPECT_TRUE(takeBackAllValues(bench));
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 3");
    EXPECT_EQ(state.set.list[2].text, u"CV3  = 5");
    EXPECT_FALSE(takeBackAllValues(bench));
}

} // namespace
} // namespace karvo
