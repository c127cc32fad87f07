#include "support/test_bench.h"
#include "workbench/change_value.h"
#include "workbench/offline_list.h"
#include "workbench/take_entry.h"

namespace karvo::test
{

class ChangeValueTest : public testing::Test, protected TestBench
{
protected:
    ChangeValueTest()
    {
        setTexts(state.texts,
                 {{682, u"CV{1} not {2}, {3} to {4}"}, {635, u"no CV{1}"}, {636, u"CV{1} empty, {2} to {3}"}},
                 {{25, u"not in the list"}, {161, u"changed"}});
        addFile("CV_Standart_kv07.txt",
                "Standard KV07\r\n1;3;a;1;126;3;\r\n2;4;b;;x;4;\r\n3;5;c;-5;900;5;\r\n");
        beginAnew();
    }
    void beginAnew()
    {
        state.set.unsavedChanges = false;
        showOfflineList(bench, "mnu_kv07");
        state.set.currentNumber = 2;
        journal.clear();
    }
    std::string values() const
    {
        std::string text;
        for (const ListLine& one : state.set.list)
            text += utf8FromText(one.text) + ";";
        return text;
    }
};

TEST_F(ChangeValueTest, AValueIsTakenWithinItsLimitsAndElseRefusedWithOneMessage)
{
    using enum ChangeEnd;
    const std::string before = "CV1  = 3;CV2  = 4;CV3  = 5;";
    const std::string notThere = "message not in the list";
    const struct {
        int cv;
        TextView typed;
        ChangeEnd end;
        std::string told;
        std::string list;
    } cases[] = {
        {1, u"126", changed, "list changed", "CV1  = 126  changed;CV2  = 4;CV3  = 5;"},
        {1, u" 03 ", changed, "list changed", before},
        {2, u"255", changed, "list changed", "CV1  = 3;CV2  = 255  changed;CV3  = 5;"},
        {3, u"0", changed, "list changed", "CV1  = 3;CV2  = 4;CV3  = 0  changed;"},
        {1, u"0", outsideLimits, "message CV1 not 0, 1 to 126", before},
        {1, u"127", outsideLimits, "message CV1 not 127, 1 to 126", before},
        {1, u"", outsideLimits, "message CV1 empty, 1 to 126", before},
        {1, u" 3,5 ", outsideLimits, "message CV1 not 3,5, 1 to 126", before},
        {1, u"-1", outsideLimits, "message CV1 not -1, 1 to 126", before},
        {2, u"256", outsideLimits, "message CV2 not 256, 0 to 255", before},
        {3, u"256", outsideLimits, "message CV3 not 256, 0 to 255", before},
        {3, u"-1", outsideLimits, "message CV3 not -1, 0 to 255", before},
        {2, u"0x10", outsideLimits, "message CV2 not 0x10, 0 to 255", before},
        {-1, u"1", notInList, notThere, before},
        {0, u"1", notInList, notThere, before},
        {4, u"1", notInList, notThere, before},
        {256, u"1", notInList, notThere, before},
        {257, u"1", notInList, notThere, before},
    };
    for (const auto& [cv, typed, end, told, list] : cases) {
        beginAnew();
        EXPECT_EQ(changeValue(bench, cv, typed), end) << told;
        EXPECT_EQ(journal, Journal{told});
        EXPECT_EQ(values(), list);
        EXPECT_EQ(state.set.unsavedChanges, list != before) << list;
        EXPECT_EQ(state.set.currentNumber, 2);
    }
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
        beginAnew();
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
    beginAnew();
    state.lineBusy = true;
    EXPECT_EQ(takeEntry(bench, {u"4", u"9"}), taken) << "no box over an operation";
    EXPECT_TRUE(journal.empty());
}

TEST_F(ChangeValueTest, TakingBackIsOneStepForOneAndForAllAndNoneWhileTheLineIsBusy)
{
    for (const int cv : {1, 2, 3})
        changeValue(bench, cv, 77);
    state.lineBusy = true;
    EXPECT_EQ(changeValue(bench, 1, 9), ChangeEnd::busy);
    EXPECT_FALSE(takeBackValue(bench, 2) || takeBackAllValues(bench));
    state.lineBusy = false;
    EXPECT_EQ(values(), "CV1  = 77  changed;CV2  = 77  changed;CV3  = 77  changed;");
    EXPECT_TRUE(takeBackValue(bench, 2));
    EXPECT_FALSE(takeBackValue(bench, 2));
    EXPECT_EQ(values(), "CV1  = 77  changed;CV2  = 4;CV3  = 77  changed;");
    EXPECT_TRUE(takeBackAllValues(bench));
    EXPECT_FALSE(takeBackAllValues(bench));
    EXPECT_EQ(values(), "CV1  = 3;CV2  = 4;CV3  = 5;");
}

} // namespace karvo::test
