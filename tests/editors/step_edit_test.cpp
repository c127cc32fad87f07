#include "editors/step_edit.h"

#include "editor_bench.h"
#include "editors/list_rows.h"
#include "support/case_table.h"
#include "support/test_bench.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

TEST(ListRowsTest, FindsRowsByName)
{
    const MainList list = {{u"CV17 = 3", {}, 17}, {u"CV1  = 4", {}, 1}, {u" 28 = 99 of 168   ", {}, 70}};
    EXPECT_EQ((std::vector{listRowOf(list, u"CV17"), listRowOf(list, u"CV1"), listRowOfStep(list, 28),
                           listRowOf(list, u"CV18"), listRowOf({}, u"CV1"), listRowOfStep(list, 1)}),
              (std::vector{1, 2, 3, 999, 999, 999}));
}

TEST(ListRowsTest, ANewValueTakesAsManyCharactersAsItHasDigitsAndALoadedOneStandsBehind)
{
    for (const auto& [cv, line, value, text] : test::casesOf<4>("editors/new_values.txt")) {
        MainList list = {{textFromUtf8(line), {}, std::stoi(cv)}};
        cv_uebernehmen(list, 1, std::stoi(value));
        for (const int beyond : {0, 2, noListRow})
            cv_uebernehmen(list, beyond, 9);
        EXPECT_EQ(utf8FromText(list[0].text), text);
    }
    for (const auto& [cv, line, loaded, text] : test::casesOf<4>("editors/loaded_values.txt")) {
        MainList list = {{textFromUtf8(line), {}, std::stoi(cv)}};
        showLoadedValue(list, std::stoi(loaded), 12);
        EXPECT_EQ(utf8FromText(list[0].text), text);
    }
}

class StepEditTest : public testing::Test
{
protected:
    StepEditTest()
    {
        test::setCaption(state.texts, 161, u"changed");
        test::setTexts(state.texts, {{805, u"outside:"}, {807, u"{1} to {2}: {3}"}, {808, u"think"}});
        bench.addFile("CV_Standart_kv07.txt", test::smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
        nines.fill(9);
        edit = StepEdit(speedTableOf(table));
    }
    std::string lineOfStep(int step) const
    {
        return utf8FromText(
            state.set.list[static_cast<std::size_t>(listRowOfStep(state.set.list, step)) - 1].text);
    }

    test::TestBench bench;
    ProgramState& state = bench.state;
    CvTable& table = state.set.table;
    SpeedTable nines{};
    StepEdit edit{nines};
};

TEST_F(StepEditTest, TakesOverOnlyWhatWasChanged)
{
    edit.setStep(1, 1); // as it is
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0);
    EXPECT_FALSE(state.set.unsavedChanges);
    edit.setStep(2, 40);
    edit.setStep(28, 140);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 2);
    EXPECT_EQ(table.value(96), 40); // step 1 is CV97, step 28 is CV70
    EXPECT_EQ(table.value(70), 140);
    EXPECT_TRUE(state.set.unsavedChanges);
    EXPECT_EQ(lineOfStep(1), "  1 = 1 of 168   ");
    EXPECT_EQ(lineOfStep(28), " 28 = 140 of 168     changed");
    EXPECT_EQ(bench.journal.back(), "list changed");
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0) << "nothing has changed since";
    table.at(97, Column::value).clear();
    const auto values = speedTableOf(table);
    EXPECT_EQ((std::array{values[0], values[1], values[27]}), (std::array{0, 40, 140}));
    const auto reply = speedTableOf(Bytes{9, 255, 7});
    EXPECT_EQ((std::array{reply[0], reply[1], reply[2], reply[3], reply[27]}), (std::array{9, 255, 7, 0, 0}));
}

TEST_F(StepEditTest, WhatIsOutsideTheLimitsIsTakenOverAndTold)
{
    table.at(73, Column::lowerLimit) = u"5";
    for (const int cv : {71, 70})
        table.at(cv, Column::upperLimit) = u"150";
    for (const auto& [step, value] : {std::pair{25, 4}, {26, 168}, {27, 160}, {28, 168}})
        edit.setStep(step, value);
    EXPECT_TRUE(edit.isChanged());
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 4);
    EXPECT_FALSE(edit.isChanged());
    EXPECT_EQ(table.value(70), 168);
    EXPECT_EQ(bench.journal.back(),
              "message outside:\r\n3 to 150: 27 = 160, 28 = 168\r\n5 to 168: 25 = 4\r\nthink");
    edit.setStep(1, 6);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 1);
    EXPECT_EQ(bench.journal.back(), "list changed") << "each is told once";
}

TEST_F(StepEditTest, AfterAGeneratorAllStepsAreTakenOverAndAResetBringsTheLastTakeOverBack)
{
    edit.fill(SpeedTable(edit.shown())); // the values that stand there
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 28);
    edit.setStep(3, 33);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 1);
    edit.fill(BasedSpeedTable{20, 140, nines});
    edit.setStep(4, 44);
    EXPECT_TRUE(edit.pendingBase());
    edit.reset();
    EXPECT_EQ(edit.shown()[2], 33);
    EXPECT_EQ(edit.shown()[3], 1);
    EXPECT_FALSE(edit.pendingBase());
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0);
    edit.fill(BasedSpeedTable{20, 140, nines}); // base and top speed come with their table
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 28);
    EXPECT_EQ(table.value(2), 20);
    EXPECT_EQ(table.value(5), 140);
    edit.fill(BasedSpeedTable{30, 150, nines});
    edit.fill(nines); // a generator's curve has none
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 28);
    EXPECT_EQ(table.value(2), 20);
}

} // namespace
} // namespace karvo
