#include "editors/speed_curves.h"

#include "editor_bench.h"
#include "editors/curve_questions.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

LanguageTables curveTexts()
{
    LanguageTables texts;
    test::setTexts(texts, {{258, u"at most "},
                           {750, u"!"},
                           {260, u"at least 3"},
                           {262, u"step 1 is "},
                           {263, u", 29 more"},
                           {765, u"middle {1} to {2}"},
                           {766, u"last from {1}"},
                           {266, u"title"}});
    return texts;
}

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

TEST(SpeedCurvesTest, EachCurveToTheLetter)
{
    const std::tuple<Curve, CurvePoints, SpeedTable> cases[] = {
        // 5 a step and 1/9 on top
        {Curve::linear, {5, 143, {}}, {5,  10, 15, 20, 25, 31,  36,  41,  46,  51,  56,  61,  66,  71,
                                       77, 82, 87, 92, 97, 102, 107, 112, 117, 123, 128, 133, 138, 143}},
        {Curve::twoPoint, {4, 31, {}}, {4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                                        18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31}},
        // Half a step each from step 14 on: halves go to the even side
        {Curve::threePoint, {4, 37, 30}, {4,  6,  8,  10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30,
                                          30, 31, 32, 32, 32, 33, 34, 34, 34, 35, 36, 36, 36, 37}},
        {Curve::logarithmic, {3, 168, {}}, {5,  5,  6,  7,  7,  8,  9,  10, 12, 13, 15,  17,  19,  22,
                                            25, 29, 34, 39, 45, 52, 60, 69, 80, 93, 108, 126, 147, 168}},
        {Curve::exponential, {3, 168, {}}, {3,   24,  45,  63,  78,  91,  102, 111, 119, 126,
                                            132, 137, 142, 146, 149, 152, 154, 156, 158, 159,
                                            161, 162, 163, 164, 164, 165, 166, 166}},
    };
    for (const auto& [curve, points, table] : cases)
        EXPECT_EQ(speedCurve(curve, points), table) << static_cast<int>(curve);
}

TEST(SpeedCurvesTest, EachCurveRisesWithinItsEnds)
{
    for (int first = 3; first <= 139; first += 4) {
        for (int last = first + 29; last <= 180; last += 7) {
            for (const Curve curve : {Curve::linear, Curve::twoPoint, Curve::threePoint, Curve::logarithmic,
                                      Curve::exponential}) {
                const auto table = speedCurve(curve, {first, last, first + 15});
                EXPECT_TRUE(std::is_sorted(table.begin(), table.end()))
                    << static_cast<int>(curve) << " from " << first << " to " << last;
                EXPECT_GE(table.front(), first);
                EXPECT_LE(table.back(), last);
                if (curve == Curve::threePoint) {
                    EXPECT_EQ(table[13], first + 15);
                }
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
    // What was told, and the points in the end.
    std::string ask(CurveQuestions questions, const std::vector<Text>& answers)
    {
        journal.clear();
        for (const Text& answer : answers)
            prompts.type(answer);
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
    LanguageTables texts = curveTexts();
    SpeedTable shown = speedCurve(Curve::linear, {10, 100, {}});
};

TEST_F(CurveQuestionsTest, EachValueIsAskedForUntilItIsSound)
{
    using enum CurveQuestions;
    using Answers = std::vector<Text>;
    const std::tuple<CurveQuestions, Answers, const char*> cases[] = {
        {firstAndLast, {u"2", u"140", u"x", u" 5 ", u""}, "at least 3; at most 139!; at least 3; "},
        {firstAndLast, {u"3", u"169", u"y", u"168"}, "at most 168!; at most 168!; 3 0 168"},
        {firstAndLast, {u"139", u"167", u"168"}, "step 1 is 139, 29 more; 139 0 168"},
        {firstMiddleAndLast,
         {u"5", u"19", u"20", u"33", u"34"},
         "middle 20 to 154; step 1 is 5, 29 more; 5 20 34"},
        {firstMiddleAndLast,
         {u"5", u"155", u"z", u"154", u"167", u"168"},
         "middle 20 to 154; middle 20 to 154; last from 168; 5 154 168"},
        {firstOnly, {u"72", u"71"}, "step 1 is 72, 29 more; 71 0 100"},
        {lastOnly, {u"38", u"39"}, "step 1 is 10, 29 more; 10 0 39"},
        {firstAndLast, {u""}, ""}, // an empty answer cancels
        {firstMiddleAndLast, {u"5", u"50", u"  "}, ""}};
    for (const auto& [questions, answers, outcome] : cases)
        EXPECT_EQ(ask(questions, answers), outcome);
    shown.back() = 200; // an end that stays and is wrong is told once
    EXPECT_EQ(ask(firstOnly, {}), "at most 168!; ");
    shown.front() = 0;
    EXPECT_EQ(ask(lastOnly, {}), "at least 3; ");
}

} // namespace
} // namespace karvo
