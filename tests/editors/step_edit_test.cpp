#include "editors/step_edit.h"

#include "editors/list_rows.h"
#include "support/test_bench.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

MainList listOf(std::initializer_list<ListLine> lines)
{
    return {lines};
}

TEST(ListRowsTest, FindsRowsByName)
{
    const auto list = listOf({{u"CV17 = 3", {}, 17}, {u"CV1  = 4", {}, 1}, {u" 28 = 99 of 168   ", {}, 70}});
    EXPECT_EQ(listRowOf(list, u"CV17"), 1);
    EXPECT_EQ(listRowOf(list, u"CV1"), 2);
    EXPECT_EQ(listRowOf(list, u"CV18"), 999);
    EXPECT_EQ(listRowOf({}, u"CV1"), 999);
    EXPECT_EQ(listRowOfStep(list, 28), 3);
    EXPECT_EQ(listRowOfStep(list, 1), 999);
}

TEST(ListRowsTest, ANewValueTakesAsManyCharactersAsItHasDigits)
{
    struct Case {
        ListLine line;
        int value;
        Text text;
    };
    const Case cases[] = {
        {{u"CV2  = 5", {}, 2}, 7, u"CV2  = 7"},
        {{u"CV2  = 55   ", {}, 2}, 66, u"CV2  = 66"},
        {{u"CV2  = 123", {}, 2}, 255, u"CV2  = 255"},
        {{u"CV2  = 123", {}, 2}, 5, u"CV2  = 125"}, // the digits of the new value decide
        {{u"CV2  = 5", {}, 2}, 12, u"CV2  =12"},
        {{u"CV2  = 5", {}, 2}, 120, u"CV2  120"},
        {{u"  1 = 5 of 168   ", {}, 97}, 6, u"  1 = 6 of 168   "},
        {{u" 28 = 99 of 168     [12]", {}, 70}, 88, u" 28 = 88 of 168     [12]"},
        {{u"CV70 - CV97 ", {}, 70}, 5, u"CV70 - CV97 "},
        {{u"", {}, 0}, 5, u"5"},
    };
    for (const Case& expected : cases) {
        auto list = listOf({expected.line});
        cv_uebernehmen(list, 1, expected.value);
        EXPECT_EQ(utf8FromText(list[0].text), utf8FromText(expected.text));
        for (const int row : {0, 2, noListRow})
            cv_uebernehmen(list, row, 9);
        EXPECT_EQ(utf8FromText(list[0].text), utf8FromText(expected.text));
    }
}

TEST(ListRowsTest, ALoadedValueStandsBehindTheOldOne)
{
    struct Case {
        ListLine line;
        int cv;
        Text text;
    };
    const Case cases[] = {
        {{u"  1 = 5 of 168   ", {}, 97}, 97, u"  1 = 5 of 168            [12]"},
        {{u"  1 = 55 of 168   ", {}, 97}, 97, u"  1 = 55 of 168          [12]"},
        {{u"  1 = 155 of 168   ", {}, 97}, 97, u"  1 = 155 of 168         [12]"},
        {{u"CV50 = 3", {}, 50}, 50, u"CV50 = 3                 [12]"},
        {{u"CV70 - CV97 ", {}, 70}, 70, u"CV70 - CV97 "},
        {{u"CV70 = 3", {}, 70}, 70, u"CV70 = 3                 [12]"}, // a list without step lines
        {{u"CV51 = 3", {}, 51}, 50, u"CV51 = 3"},
    };
    for (const Case& expected : cases) {
        auto list = listOf({expected.line});
        showLoadedValue(list, expected.cv, 12);
        EXPECT_EQ(utf8FromText(list[0].text), utf8FromText(expected.text));
    }
}

struct EditBench : test::TestBench {
    EditBench()
    {
        test::setCaption(state.texts, 161, u"changed");
        state.link.identified = true;
        addFile("CV_Standart_kv07.txt", test::smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        journal.clear();
    }
    std::string lineOfStep(int step)
    {
        const int row = listRowOfStep(state.set.list, step);
        return row == noListRow ? "none"
                                : utf8FromText(state.set.list[static_cast<std::size_t>(row) - 1].text);
    }
};

TEST(StepEditTest, StepOneIsCv97AndStep28IsCv70)
{
    EditBench bench;
    bench.state.set.table.setValue(97, 5);
    bench.state.set.table.setValue(70, 140);
    bench.state.set.table.at(96, Column::value).clear();
    const auto values = speedTableOf(bench.state.set.table);
    EXPECT_EQ(values[0], 5);
    EXPECT_EQ(values[1], 0);
    EXPECT_EQ(values[27], 140);
    const auto reply = speedTableOf(Bytes{9, 255, 7});
    EXPECT_EQ((std::array{reply[0], reply[1], reply[2], reply[3], reply[27]}), (std::array{9, 255, 7, 0, 0}));
}

TEST(StepEditTest, TakesOverOnlyWhatWasChanged)
{
    EditBench bench;
    StepEdit edit(speedTableOf(bench.state.set.table));
    edit.setStep(1, 1); // as it is
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0);
    EXPECT_FALSE(bench.state.set.unsavedChanges);
    edit.setStep(2, 40);
    edit.setStep(28, 140);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 2);
    EXPECT_EQ(bench.state.set.table.value(96), 40);
    EXPECT_EQ(bench.state.set.table.value(70), 140);
    EXPECT_TRUE(bench.state.set.unsavedChanges);
    EXPECT_EQ(bench.lineOfStep(1), "  1 = 1 of 168   ");
    EXPECT_EQ(bench.lineOfStep(28), " 28 = 140 of 168     changed");
    EXPECT_EQ(bench.journal.back(), "list changed");
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0) << "nothing has changed since";
}

TEST(StepEditTest, WhatIsOutsideTheLimitsIsTakenOverAndTold)
{
    EditBench bench;
    for (const auto& [number, text] :
         {std::pair{805, u"outside:"}, {807, u"{1} to {2}: {3}"}, {808, u"think"}})
        test::setText(bench.state.texts, number, text);
    bench.state.set.table.at(73, Column::lowerLimit) = u"5";
    for (const int cv : {71, 70})
        bench.state.set.table.at(cv, Column::upperLimit) = u"150";
    StepEdit edit(speedTableOf(bench.state.set.table));
    for (const auto& [step, value] : {std::pair{25, 4}, {26, 168}, {27, 160}, {28, 168}})
        edit.setStep(step, value);
    EXPECT_TRUE(edit.isChanged());
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 4);
    EXPECT_FALSE(edit.isChanged());
    EXPECT_EQ(bench.state.set.table.value(70), 168);
    EXPECT_EQ(bench.journal.back(),
              "message outside:\r\n3 to 150: 27 = 160, 28 = 168\r\n5 to 168: 25 = 4\r\nthink");
    edit.setStep(1, 6);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 1);
    EXPECT_EQ(bench.journal.back(), "list changed") << "each is told once";
}

TEST(StepEditTest, AfterAGeneratorAllStepsAreTakenOver)
{
    EditBench bench;
    StepEdit edit(speedTableOf(bench.state.set.table));
    SpeedTable ones{};
    ones.fill(1);
    edit.fill(ones); // the values that stand there
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 28);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0);
}

TEST(StepEditTest, ResetBringsTheLastTakeOverBack)
{
    EditBench bench;
    StepEdit edit(speedTableOf(bench.state.set.table));
    edit.setStep(3, 33);
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 1);
    SpeedTable nines{};
    nines.fill(9);
    edit.fill(BasedSpeedTable{20, 140, nines});
    edit.setStep(4, 44);
    EXPECT_TRUE(edit.pendingBase());
    edit.reset();
    EXPECT_EQ(edit.shown()[2], 33);
    EXPECT_EQ(edit.shown()[3], 1);
    EXPECT_FALSE(edit.pendingBase());
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 0);
}

TEST(StepEditTest, BaseAndTopSpeedComeWithTheirTable)
{
    EditBench bench;
    StepEdit edit(speedTableOf(bench.state.set.table));
    SpeedTable nines{};
    nines.fill(9);
    edit.fill(BasedSpeedTable{20, 140, nines});
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 28);
    EXPECT_EQ(bench.state.set.table.value(2), 20);
    EXPECT_EQ(bench.state.set.table.value(5), 140);
    edit.fill(BasedSpeedTable{30, 150, nines});
    edit.fill(nines); // a generator's curve has none
    EXPECT_EQ(edit.Uebernehmen(bench.bench), 28);
    EXPECT_EQ(bench.state.set.table.value(2), 20);
}

} // namespace
} // namespace karvo
