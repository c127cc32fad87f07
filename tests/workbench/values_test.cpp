#include "cvdata/changes.h"
#include "support/case_table.h"
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
    const auto typedText = [](const std::string& text) {
        return text == "-" ? std::nullopt : std::optional(textFromUtf8(text));
    };
    for (const auto& [number, value, current, told, expected] : casesOf<5>("workbench/typed_values.txt")) {
        beginAnew();
        const TypedEntry typed{typedText(number), typedText(value)};
        EXPECT_EQ(canBeTaken(state.set, typed), !told.starts_with("message")) << told;
        EXPECT_EQ(takeEntry(bench, typed), !told.starts_with("message")        ? EntryEnd::taken
                                           : told.starts_with("message no CV") ? EntryEnd::numberRefused
                                                                               : EntryEnd::valueRefused);
        EXPECT_EQ(std::to_string(state.set.currentNumber), current) << told;
        EXPECT_EQ(joined(journal), told);
        EXPECT_EQ(values(), expected);
        EXPECT_EQ(state.set.unsavedChanges, expected.find('*') != std::string::npos) << expected;
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
    // What is on the bench after CV1 was set to 43 and a batch has set CV2 of a file to 9.
    const auto after = [this](const std::filesystem::path& path, bool done, auto change) {
        beginAnew();
        changeValue(bench, 1, 43);
        change(state);
        journal.clear();
        std::vector<BatchFile> batch(2);
        batch[1].path = path;
        batch[1].rows = {{2, u"4", 9}};
        batch[1].done = done;
        takeBatchChanges(bench, batch);
        EXPECT_TRUE(state.set.unsavedChanges);
        return values() + joined(journal);
    };
    const auto nothing = [](ProgramState&) {};
    EXPECT_EQ(after("lists/../lists/bus.kvr", true, nothing), "43* 9 5 list changed");
    EXPECT_EQ(after("lists/bus.kvr", true, [](auto& s) { s.set.offlineItem.clear(); }),
              "43* 9* 5 list changed")
        << "read and saved there";
    EXPECT_EQ(after("lists/bus.kvr", false, nothing), "43* 4 5 ");
    EXPECT_EQ(after("lists/other.kvr", true, nothing), "43* 4 5 ");
    EXPECT_EQ(after("", true, [](auto& s) { s.set.listPath.clear(); }), "43* 4 5 ");
    EXPECT_EQ(after("lists/bus.kvr", true, [](auto& s) { s.lineBusy = true; }), "43* 4 5 ");
    EXPECT_EQ(after("lists/bus.kvr", true, [](auto& s) { s.set.list.clear(); }), "");
}

} // namespace karvo::test
