#include "editors/editor_gate.h"

#include "editor_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::setUsing;

TEST(EditorGateTest, OpensWhereModelAndDescriptionHaveWhatItNeeds)
{
    LanguageTables texts;
    test::setTexts(texts,
                   {{774, u"no list"}, {775, u"{1} is not {2}"}, {776, u"{1} lacks {2}"}, {777, u"no {1}"}});
    std::vector<int> speedSteps;
    for (int cv = 70; cv <= 97; ++cv)
        speedSteps.push_back(cv);
    const auto v1 = setUsing(Model::kv07, speedSteps);
    auto offline = setUsing(Model::kv07);
    offline.table.at(173, Column::value).clear();
    const std::tuple<Editor, CvSet, const char*> cases[] = {
        {Editor::braking, setUsing(Model::kv04), ""},
        {Editor::braking, setUsing(Model::receiver), "KV-R is not KV04, KV05, KV06, KV07, KV08"},
        {Editor::braking, setUsing(Model::kv06, {48, 53, 54}), "KV06 lacks CV48, CV53-54"},
        {Editor::braking, CvSet(), "no list"},
        {Editor::speedTable, v1, "KV07 lacks CV70-97"},
        {Editor::speedTable, setUsing(Model::trailer), "AN07 is not KV04, KV05, KV06, KV07, KV08"},
        {Editor::speedTable, offline, ""},
        {Editor::baseAndTop, v1, ""},
        {Editor::presets, v1, "KV07 lacks CV70-97"},
        {Editor::presets, CvSet(), ""}, // it says itself what is missing
        {Editor::addresses, setUsing(Model::receiver, {21}), ""},
        {Editor::firstServo, setUsing(Model::kv05), "KV05 is not KV07, KV08, KV-R, KV-XT"},
        {Editor::firstServo, setUsing(Model::kv08, {174, 175}), ""},
        {Editor::servoTimes, setUsing(Model::receiver, {175}), "KV-R lacks CV175"},
        {Editor::servoTimes, offline, "no CV173"},
        {Editor::servoAddresses, setUsing(Model::kv07, {13, 14}), ""},
    };
    for (const auto& [editor, set, reason] : cases)
        EXPECT_EQ(utf8FromText(whyNotOpen(editor, set, texts).value_or(Text())), reason);
}

} // namespace
} // namespace karvo
