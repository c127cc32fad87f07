#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/batch_on_bench.h"
#include "workbench/change_value.h"
#include "workbench/list_files.h"
#include "workbench/take_entry.h"

namespace karvo::test
{

class ValuesTest : public testing::Test, protected TestBench
{
protected:
    ValuesTest()
    {
        setTexts(state.texts,
                 {{682, u"CV{1} not {2}, {3} to {4}"}, {635, u"no CV{1}"}, {636, u"CV{1} empty, {2} to {3}"}},
                 {{25, u"not in the list"}});
        files.content["lists/bus.kvr"] = bytesOf("Standard KV07*5\r\n1;3;a;1;126;3;\r\n2;4;b;;x;4;\r\n"
                                                 "3;5;c;-5;900;5;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n");
        beginAnew();
    }
    void beginAnew()
    {
        state.lineBusy = false;
        ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
        state.set.currentNumber = 2;
        journal.clear();
    }
    // Those of the three CVs; a star marks what is changed.
    std::string values() const
    {
        std::string text;
        for (const ListLine& one : state.set.list)
            text += utf8FromText(state.set.table.at(one.cv, Column::value)) + (one.changed ? "* " : " ");
        return text;
    }
};

TEST_F(ValuesTest, WhatIsTypedIsTakenWithinTheLimitsAndElseRefusedWithOneMessage)
{
    using enum EntryEnd;
    const auto none = std::nullopt;
    const std::string before = "3 4 5 ";
    const struct {
        TypedEntry typed; // number and value
        EntryEnd end;
        int current; // it was 2
        std::string told;
        std::string values;
    } cases[] = {
        {{u"1", u"126"}, taken, 1, "list changed", "126* 4 5 "},
        {{u"1", u" 03 "}, taken, 1, "list changed", before},
        {{none, u"255"}, taken, 2, "list changed", "3 255* 5 "},
        {{u"3", u"0"}, taken, 3, "list changed", "3 4 0* "},
        {{u"3", none}, taken, 3, "", before},
        {{u"", none}, taken, 2, "", before},
        {{u"0", u"8"}, taken, 2, "list changed", "3 8* 5 "},
        {{u"4", u"9"}, numberRefused, 2, "message no CV4", before},
        {{u"1", u"0"}, valueRefused, 1, "message CV1 not 0, 1 to 126", before},
        {{u"1", u"127"}, valueRefused, 1, "message CV1 not 127, 1 to 126", before},
        {{u"1", u" 3,5 "}, valueRefused, 1, "message CV1 not 3,5, 1 to 126", before},
        {{none, u""}, valueRefused, 2, "message CV2 empty, 0 to 255", before},
        {{none, u"-1"}, valueRefused, 2, "message CV2 not -1, 0 to 255", before},
        {{u"3", u"256"}, valueRefused, 3, "message CV3 not 256, 0 to 255", before},
    };
    for (const auto& [typed, end, current, told, expected] : cases) {
        beginAnew();
        EXPECT_EQ(canBeTaken(state.set, typed), end == taken) << told;
        EXPECT_EQ(takeEntry(bench, typed), end) << told;
        EXPECT_EQ(state.set.currentNumber, current) << told;
        EXPECT_EQ(joined(journal), told);
        EXPECT_EQ(values(), expected);
        EXPECT_EQ(state.set.unsavedChanges, expected != before) << expected;
    }
    for (const int cv : {0, 4, 257}) {
        EXPECT_EQ(changeValue(bench, cv, 1), ChangeEnd::notInList);
        EXPECT_EQ(journal.back(), "message not in the list");
    }
    EXPECT_EQ(changeValue(bench, 1, 127), ChangeEnd::outsideLimits);
}

TEST_F(ValuesTest, TakingBackIsOneStepForOneAndForAllAndNothingIsDoneWhileTheLineIsBusy)
{
    for (const int cv : {1, 2, 3})
        changeValue(bench, cv, 77);
    state.lineBusy = true;
    journal.clear();
    EXPECT_EQ(changeValue(bench, 1, 9), ChangeEnd::busy);
    EXPECT_EQ(takeEntry(bench, {u"4", u"9"}), EntryEnd::taken) << "no box over an operation";
    EXPECT_FALSE(takeBackValue(bench, 2) || takeBackAllValues(bench));
    EXPECT_EQ(joined(journal), "");
    state.lineBusy = false;
    EXPECT_TRUE(takeBackValue(bench, 2));
    EXPECT_FALSE(takeBackValue(bench, 2));
    EXPECT_EQ(values(), "77* 4 77* ");
    EXPECT_TRUE(takeBackAllValues(bench));
    EXPECT_FALSE(takeBackAllValues(bench));
    EXPECT_EQ(values(), "3 4 5 ");
}

TEST_F(ValuesTest, TheSetOnTheBenchFollowsItsFileAndKeepsWhatIsUnsaved)
{
    const auto nothing = [](ProgramState&) {};
    const struct {
        const char* what;
        std::function<void(ProgramState&)> before;
        std::filesystem::path file;
        bool done;
        std::string values;
    } cases[] = {
        {"an opened list", nothing, "lists/../lists/bus.kvr", true, "43* 9 5 "},
        {"read and saved", [](auto& s) { s.set.offlineItem.clear(); }, "lists/bus.kvr", true, "43* 9* 5 "},
        {"a refused file", nothing, "lists/bus.kvr", false, "43* 4 5 "},
        {"another file", nothing, "lists/other.kvr", true, "43* 4 5 "},
        {"a set without a file", [](auto& s) { s.set.listPath.clear(); }, "", true, "43* 4 5 "},
        {"a busy line", [](auto& s) { s.lineBusy = true; }, "lists/bus.kvr", true, "43* 4 5 "},
        {"no list", [](auto& s) { s.set.list.clear(); }, "lists/bus.kvr", true, ""},
    };
    for (const auto& [what, before, path, done, expected] : cases) {
        beginAnew();
        changeValue(bench, 1, 43);
        before(state);
        journal.clear();
        std::vector<BatchFile> batch(2);
        batch[1].path = path;
        batch[1].rows = {{2, u"4", 9}};
        batch[1].done = done;
        takeBatchChanges(bench, batch);
        EXPECT_EQ(values(), expected) << what;
        EXPECT_TRUE(state.set.unsavedChanges) << what;
        EXPECT_EQ(joined(journal), expected.find("9") == std::string::npos ? "" : "list changed") << what;
    }
}

} // namespace karvo::test
