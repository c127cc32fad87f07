#include "editors/editor_gate.h"

#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

LanguageTables gateTexts()
{
    LanguageTables texts;
    for (const auto& [number, text] : {std::pair{774, u"no list"},
                                       {775, u"{1} is not {2}"},
                                       {776, u"{1} lacks {2}"},
                                       {777, u"no value {1}"}})
        test::setText(texts, number, text);
    return texts;
}

// A list of a model that uses all CVs but those.
CvSet setOf(Model model, const std::vector<int>& unused = {})
{
    CvSet set;
    set.profile.model = model;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        set.table.at(cv, Column::number) = textFromNumber(cv);
        set.table.at(cv, Column::factoryValue) = u"1";
        set.table.setValue(cv, 1);
    }
    for (const int cv : unused)
        set.table.at(cv, Column::factoryValue).clear();
    set.list.push_back({});
    return set;
}

TEST(EditorGate, OpensWhereModelAndDescriptionHaveWhatItNeeds)
{
    struct Case {
        Editor editor;
        CvSet set;
        const char* reason;
    };
    std::vector<int> speedSteps;
    for (int cv = 70; cv <= 97; ++cv)
        speedSteps.push_back(cv);
    const auto v1 = setOf(Model::kv07, speedSteps);
    const Case cases[] = {
        {Editor::braking, setOf(Model::kv04), ""},
        {Editor::braking, setOf(Model::receiver), "KV-R is not KV04, KV05, KV06, KV07, KV08"},
        {Editor::braking, setOf(Model::kv06, {48, 53, 54}), "KV06 lacks CV48, CV53-54"},
        {Editor::braking, CvSet(), "no list"},
        {Editor::speedTable, v1, "KV07 lacks CV70-97"},
        {Editor::speedTable, setOf(Model::trailer), "AN07 is not KV04, KV05, KV06, KV07, KV08"},
        {Editor::baseAndTop, v1, ""},
        {Editor::presets, v1, "KV07 lacks CV70-97"},
        {Editor::presets, CvSet(), ""}, // it says itself what is missing
        {Editor::addresses, setOf(Model::receiver, {21}), ""},
        {Editor::addresses, setOf(Model::trailer), ""},
        {Editor::firstServo, setOf(Model::kv05), "KV05 is not KV07, KV08, KV-R, KV-XT"},
        {Editor::firstServo, setOf(Model::kv08, {174, 175}), ""},
        {Editor::servoTimes, setOf(Model::receiver, {175}), "KV-R lacks CV175"},
        {Editor::servoAddresses, setOf(Model::kv07, {13, 14}), ""},
    };
    for (const Case& expected : cases)
        EXPECT_EQ(utf8FromText(whyNotOpen(expected.editor, expected.set, gateTexts()).value_or(Text())),
                  expected.reason);
    auto offline = setOf(Model::kv07);
    offline.table.at(173, Column::value).clear();
    EXPECT_EQ(whyNotOpen(Editor::servoTimes, offline, gateTexts()), u"no value CV173");
    EXPECT_FALSE(whyNotOpen(Editor::speedTable, offline, gateTexts()));
}

TEST(EditorGate, LeavesOutWhatTheModelHasNot)
{
    EXPECT_TRUE(dealsWith(Editor::addresses, setOf(Model::kv04), 21));
    EXPECT_FALSE(dealsWith(Editor::addresses, setOf(Model::receiver), 21)) << "another thing there";
    EXPECT_FALSE(dealsWith(Editor::addresses, setOf(Model::kv04, {21}), 21));
    EXPECT_TRUE(dealsWith(Editor::servoAddresses, setOf(Model::xtModule), 250));
    EXPECT_FALSE(dealsWith(Editor::servoAddresses, setOf(Model::kv07), 250));
    EXPECT_FALSE(dealsWith(Editor::servoAddresses, setOf(Model::kv07, {13}), 13));
}

} // namespace
} // namespace karvo
