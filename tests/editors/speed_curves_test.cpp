#include "editors/speed_curves.h"

#include "editors/curve_questions.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

LanguageTables curveTexts()
{
    LanguageTables texts;
    for (const auto& [number, text] : {std::pair{258, u"at most "},
                                       {750, u"!"},
                                       {260, u"at least 3"},
                                       {262, u"step 1 is "},
                                       {263, u", 29 more"},
                                       {765, u"middle {1} to {2}"},
                                       {766, u"last from {1}"},
                                       {266, u"title"}})
        test::setText(texts, number, text);
    return texts;
}

DecoderProfile profileWith(Model model, Generation generation)
{
    DecoderProfile profile;
    profile.model = model;
    profile.generation = generation;
    return profile;
}

TEST(SpeedCurvesTest, TheHighestValueIsTheGenerations)
{
    const auto kv04 = profileWith(Model::kv04, Generation::until2008First);
    const auto f5 = profileWith(Model::kv07, Generation::f5);
    const auto kv07 = profileWith(Model::kv07, Generation::standard);
    EXPECT_EQ(highestSpeed(kv04), 180);
    EXPECT_EQ(highestSpeed(f5), 120);
    EXPECT_EQ(highestSpeed(kv07), 168);
    EXPECT_EQ(highestLinearSpeed(kv04), 180);
    EXPECT_EQ(highestLinearSpeed(f5), 80);
}

TEST(SpeedCurvesTest, EachCurveToTheLetter)
{
    struct Case {
        Curve curve;
        CurvePoints points;
        SpeedTable table;
    };
    const Case cases[] = {
        // 5 a step and 1/9 on top
        {Curve::linear, {5, 143, {}}, {5,  10, 15, 20, 25, 31,  36,  41,  46,  51,  56,  61,  66,  71,
                                       77, 82, 87, 92, 97, 102, 107, 112, 117, 123, 128, 133, 138, 143}},
        // Half a step each: halves go to the even side
        {Curve::twoPoint, {4, 31, {}}, {4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                                        18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31}},
        {Curve::threePoint, {3, 31, 16}, {3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                                          17, 18, 19, 20, 21, 22, 24, 25, 26, 27, 28, 29, 30, 31}},
    };
    for (const Case& expected : cases)
        EXPECT_EQ(speedCurve(expected.curve, expected.points), expected.table)
            << static_cast<int>(expected.curve);
}

TEST(SpeedCurvesTest, HalvesGoToTheEvenValue)
{
    const auto table = speedCurve(Curve::threePoint, {4, 37, 30}); // half a step each from step 14 on
    EXPECT_EQ((std::array{table[13], table[14], table[15], table[16], table[17], table[18]}),
              (std::array{30, 30, 31, 32, 32, 32}));
}

TEST(SpeedCurvesTest, TheHyperbolicCurvesToTheLetter)
{
    EXPECT_EQ(speedCurve(Curve::logarithmic, {3, 168, {}}),
              (SpeedTable{5,  5,  6,  7,  7,  8,  9,  10, 12, 13, 15,  17,  19,  22,
                          25, 29, 34, 39, 45, 52, 60, 69, 80, 93, 108, 126, 147, 168}));
    EXPECT_EQ(speedCurve(Curve::exponential, {3, 168, {}}),
              (SpeedTable{3,   24,  45,  63,  78,  91,  102, 111, 119, 126, 132, 137, 142, 146,
                          149, 152, 154, 156, 158, 159, 161, 162, 163, 164, 164, 165, 166, 166}));
}

TEST(SpeedCurvesTest, EachCurveRisesWithinItsEnds)
{
    for (int first = 3; first <= 139; first += 4) {
        for (int last = first + 29; last <= 180; last += 7) {
            for (const Curve curve : {Curve::linear, Curve::twoPoint, Curve::threePoint, Curve::logarithmic,
                                      Curve::exponential}) {
                const CurvePoints points{
                    first, last, curve == Curve::threePoint ? std::optional(first + 15) : std::nullopt};
                const auto table = speedCurve(curve, points);
                EXPECT_TRUE(std::is_sorted(table.begin(), table.end()))
                    << static_cast<int>(curve) << " from " << first << " to " << last;
                EXPECT_GE(table.front(), first);
                EXPECT_LE(table.back(), last);
                if (points.middle) {
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

TEST(SpeedCurvesTest, WhichValuesAreRefused)
{
    const auto texts = curveTexts();
    const auto ofFirst = [&](std::optional<int> typed) {
        return utf8FromText(refusalOfFirstStep(typed, 168, texts).value_or(u"sound"));
    };
    EXPECT_EQ(ofFirst(2), "at least 3");
    EXPECT_EQ(ofFirst(std::nullopt), "at least 3");
    EXPECT_EQ(ofFirst(3), "sound");
    EXPECT_EQ(ofFirst(139), "sound");
    EXPECT_EQ(ofFirst(140), "at most 139!");
    const auto ofLast = [&](std::optional<int> typed, const CurvePoints& before) {
        return utf8FromText(refusalOfLastStep(typed, before, 168, texts).value_or(u"sound"));
    };
    EXPECT_EQ(ofLast(31, {3, 0, {}}), "step 1 is 3, 29 more");
    EXPECT_EQ(ofLast(32, {3, 0, {}}), "sound");
    EXPECT_EQ(ofLast(168, {3, 0, {}}), "sound");
    EXPECT_EQ(ofLast(169, {3, 0, {}}), "at most 168!");
    EXPECT_EQ(ofLast(std::nullopt, {3, 0, {}}), "at most 168!");
    EXPECT_EQ(ofLast(63, {3, 0, 50}), "last from 64");
    EXPECT_EQ(ofLast(64, {3, 0, 50}), "sound");
    const auto ofMiddle = [&](std::optional<int> typed) {
        return utf8FromText(refusalOfMiddleStep(typed, 3, 168, texts).value_or(u"sound"));
    };
    EXPECT_EQ(ofMiddle(17), "middle 18 to 154");
    EXPECT_EQ(ofMiddle(18), "sound");
    EXPECT_EQ(ofMiddle(154), "sound");
    EXPECT_EQ(ofMiddle(155), "middle 18 to 154");
    EXPECT_EQ(ofMiddle(std::nullopt), "middle 18 to 154");
}

class CurveQuestionsTest : public testing::Test
{
protected:
    std::string ask(CurveQuestions questions, const std::vector<Text>& answers)
    {
        for (const Text& answer : answers)
            prompts.type(answer);
        const auto points = askForCurve({questions, shown, 168}, prompts, texts);
        if (!points)
            return "nothing";
        return std::to_string(points->first) + " " + std::to_string(points->middle.value_or(0)) + " " +
               std::to_string(points->last);
    }

    test::Journal journal;
    test::ScriptedPrompts prompts{journal};
    LanguageTables texts = curveTexts();
    SpeedTable shown = speedCurve(Curve::linear, {10, 100, {}});
};

TEST_F(CurveQuestionsTest, AsksEachValueUntilItIsSound)
{
    EXPECT_EQ(ask(CurveQuestions::firstAndLast, {u"2", u"140", u"x", u" 5 ", u"169", u"33", u"34"}),
              "5 0 34");
    EXPECT_EQ(journal, (test::Journal{"input title", "message at least 3", "input title",
                                      "message at most 139!", "input title", "message at least 3",
                                      "input title", "input title", "message at most 168!", "input title",
                                      "message step 1 is 5, 29 more", "input title"}));
    EXPECT_EQ(ask(CurveQuestions::firstMiddleAndLast, {u"5", u"19", u"20", u"33", u"34"}), "5 20 34");
    EXPECT_EQ(ask(CurveQuestions::firstOnly, {u"72", u"71"}), "71 0 100");
    EXPECT_EQ(ask(CurveQuestions::lastOnly, {u"38", u"39"}), "10 0 39");
}

TEST_F(CurveQuestionsTest, AnEmptyAnswerCancels)
{
    EXPECT_EQ(ask(CurveQuestions::firstAndLast, {u""}), "nothing");
    EXPECT_EQ(ask(CurveQuestions::firstAndLast, {u"5", u"  "}), "nothing");
    EXPECT_EQ(ask(CurveQuestions::firstMiddleAndLast, {u"5", u"50", u""}), "nothing");
}

TEST_F(CurveQuestionsTest, AnEndThatStaysAndIsWrongIsToldOnce)
{
    shown.back() = 200;
    EXPECT_EQ(ask(CurveQuestions::firstOnly, {}), "nothing");
    EXPECT_EQ(journal, (test::Journal{"message at most 168!"}));
    journal.clear();
    shown.front() = 0;
    EXPECT_EQ(ask(CurveQuestions::lastOnly, {}), "nothing");
    EXPECT_EQ(journal, (test::Journal{"message at least 3"}));
}

} // namespace
} // namespace karvo
