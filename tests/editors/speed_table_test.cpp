// Speed tables: their curves, what is asked for them, and their take-over into the list.
#include "editors/curve_questions.h"
#include "editors/list_rows.h"
#include "editors/speed_curves.h"
#include "editors/step_edit.h"
#include "workbench/offline_list.h"

#include "editor_bench.h"
#include "support/case_table.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace karvo
{
namespace
{

TEST(SpeedCurvesTest, TheHighestValueIsTheGenerations)
{
    const std::tuple<Generation, int, int> cases[] = {
        {Generation::until2008First, 180, 180}, {Generation::f5, 120, 80}, {Generation::standard, 168, 168}};
    for (const auto& [generation, highest, highestLinear] : cases) {
        DecoderProfile profile;
        profile.generation = generation;
        EXPECT_EQ(highestSpeed(profile), highest);
        EXPECT_EQ(highestLinearSpeed(profile), highestLinear);
    }
}

const std::array<std::string, 5> curves = {"linear", "twoPoint", "threePoint", "logarithmic", "exponential"};

TEST(SpeedCurvesTest, EachCurveToTheLetter)
{
    for (const auto& [name, ends, expected] : test::casesOf<3>("editors/curves.txt")) {
        CurvePoints points{};
        std::istringstream numbers(ends);
        numbers >> points.first >> points.last;
        if (int middle = 0; numbers >> middle)
            points.middle = middle;
        const auto curve = static_cast<Curve>(std::find(curves.begin(), curves.end(), name) - curves.begin());
        std::string values;
        for (const int value : speedCurve(curve, points))
            values += std::to_string(value) + " ";
        EXPECT_EQ(values, expected) << name;
    }
}

TEST(SpeedCurvesTest, EachCurveRisesWithinItsEnds)
{
    for (std::size_t i = 0; i < curves.size(); ++i) {
        for (int first = 3; first <= 139; first += 4) {
            for (int last = first + 29; last <= 180; last += 7) {
                const auto table = speedCurve(static_cast<Curve>(i), {first, last, first + 15});
                EXPECT_TRUE(std::is_sorted(table.begin(), table.end()) && table.front() >= first &&
                            table.back() <= last)
                    << curves[i] << " from " << first << " to " << last;
                EXPECT_TRUE(static_cast<Curve>(i) != Curve::threePoint || table[13] == first + 15);
            }
        }
    }
}

TEST(SpeedCurvesTest, TheExaggeratedCurveStartsHalfAsSteepAndEndsAtTheTop)
{
    SpeedTable taken{};
    for (std::size_t i = 0; i < taken.size(); ++i)
        taken[i] = 4 + static_cast<int>(i) * 4; // 4 to 112
    const auto table = exaggeratedCurve(taken, 168);
    EXPECT_EQ(table[0], 4);
    EXPECT_EQ(table[13], 31) << "4 + 13 * 108 / 26 / 2";
    EXPECT_EQ(table[27], 168);
    EXPECT_TRUE(std::is_sorted(table.begin(), table.end()));
    for (const int value : {0, 255}) {
        taken.fill(value);
        const auto clamped = exaggeratedCurve(taken, 120);
        EXPECT_GE(clamped.front(), 3);
        EXPECT_EQ(clamped.back(), 120);
        EXPECT_TRUE(std::is_sorted(clamped.begin(), clamped.end())) << value;
    }
}

class CurveQuestionsTest : public testing::Test
{
protected:
    CurveQuestionsTest()
    {
        test::setTexts(texts, {{258, u"at most "}, {750, u"!"}, {260, u"at least 3"}, {262, u"step 1 is "}});
        test::setTexts(texts, {{263, u", 29 more"}, {765, u"middle {1} to {2}"}, {766, u"last from {1}"}});
    }
    // What was told, and the points in the end.
    std::string ask(CurveQuestions questions, const std::string& answers)
    {
        journal.clear();
        std::istringstream each(answers);
        for (std::string answer; std::getline(each, answer, ',');)
            prompts.type(textFromUtf8(answer));
        const auto points = askForCurve({questions, shown, 168}, prompts, texts);
        std::string outcome;
        for (const auto& entry : journal)
            outcome += entry.starts_with("message ") ? entry.substr(8) + "; " : "";
        return points ? outcome + std::to_string(points->first) + " " +
                            std::to_string(points->middle.value_or(0)) + " " + std::to_string(points->last)
                      : outcome;
    }

    test::Journal journal;
    test::ScriptedPrompts prompts{journal};
    LanguageTables texts;
    SpeedTable shown = speedCurve(Curve::linear, {10, 100, {}});
};

TEST_F(CurveQuestionsTest, EachValueIsAskedForUntilItIsSound)
{
    using enum CurveQuestions;
    const std::map<std::string, CurveQuestions> questions = {{"firstAndLast", firstAndLast},
                                                             {"firstOnly", firstOnly},
                                                             {"lastOnly", lastOnly},
                                                             {"firstMiddleAndLast", firstMiddleAndLast}};
    for (const auto& [asked, answers, outcome] : test::casesOf<3>("editors/curve_answers.txt"))
        EXPECT_EQ(ask(questions.at(asked), answers), outcome);
    shown.back() = 200; // an end that stays and is wrong is told once
    EXPECT_EQ(ask(firstOnly, ""), "at most 168!; ");
    shown.front() = 0;
    EXPECT_EQ(ask(lastOnly, ""), "at least 3; ");
}

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
