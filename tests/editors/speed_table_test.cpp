// Speed tables: their curves, what is asked for them, and their take-over into the list.
#include "editors/curve_questions.h"
#include "editors/list_rows.h"
#include "editors/speed_curves.h"
#include "editors/step_edit.h"

#include "editor_bench.h"

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

struct StepEditBench : test::EditorBench {
    StepEdit edit{speedTableOf(table)};

    StepEditBench()
    {
        test::setTexts(state.texts, {{805, u"outside:"}});
        const auto prepare = [this](const std::string& name, const std::function<void(std::string)>& act) {
            steps[name] = [act](auto& words) { return act(words), std::string(); };
        };
        prepare("set", [this](auto values) {
            for (const auto& [step, value] : test::numbersOf(values))
                edit.setStep(step, value);
        });
        prepare("fill", [this](auto values) {
            SpeedTable all{};
            all.fill(std::stoi(values));
            edit.fill(all);
        });
        prepare("fill-shown", [this](auto) { edit.fill(SpeedTable(edit.shown())); });
        prepare("fill-based", [this](auto ends) {
            const auto [base, top] = test::numbersOf(ends).front();
            edit.fill(BasedSpeedTable{base, top, SpeedTable(edit.shown())});
        });
        prepare("reset", [this](auto) { edit.reset(); });
        prepare("again", [this](auto) { edit = StepEdit(speedTableOf(table)); });
        steps["take"] = [this](auto&) {
            const auto taken = std::to_string(edit.Uebernehmen(bench));
            return taken + ": " + passed();
        };
        steps["shown"] = [this](auto& wanted) {
            std::string values = edit.isChanged() ? "changed " : "";
            for (const auto& [step, unused] : test::numbersOf(wanted))
                values += std::to_string(edit.shown()[static_cast<std::size_t>(step) - 1]) + " ";
            return values + (edit.pendingBase() ? "based" : "");
        };
    }
};

TEST(StepEditTest, EachStepShowsWhatItShould)
{
    test::carryOut<StepEditBench>("editors/step_edit.txt");
    CvImage image{}; // step n is the byte of CV 98 - n
    image[97] = 9;
    image[96] = 255;
    image[70] = 7;
    const auto held = speedTableOf(image);
    EXPECT_EQ((std::array{held[0], held[1], held[2], held[27]}), (std::array{9, 255, 0, 7}));
}

} // namespace
} // namespace karvo
