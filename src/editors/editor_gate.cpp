#include "editors/editor_gate.h"

#include "cvdata/cv_use.h"
#include "cvdata/speed_cvs.h"

#include <algorithm>
#include <vector>

namespace karvo
{

namespace
{

constexpr Model drivingVehicles[] = {Model::kv04, Model::kv05, Model::kv06, Model::kv07, Model::kv08};
constexpr Model vehicles[] = {Model::kv04, Model::kv05, Model::kv06,
                              Model::kv07, Model::kv08, Model::trailer};
constexpr Model withServos[] = {Model::kv07, Model::kv08, Model::receiver, Model::xtModule};
constexpr Model receivers[] = {Model::receiver, Model::xtModule};

constexpr CvRange addressCvs[] = {{1, 1}, {3, 3}, {15, 18}, {29, 29}};
constexpr OptionalCvs secondAddressSwitch[] = {{{21, 21}, vehicles}}; // a receiver has none
constexpr CvRange distanceCvs[] = {{48, 48}, {52, 54}};
constexpr CvRange speedStepCvs[] = {{firstSpeedStepCv, lastSpeedStepCv}};
constexpr CvRange baseAndTopCvs[] = {{baseSpeedCv, baseSpeedCv}, {topSpeedCv, topSpeedCv}};
constexpr CvRange positionCvs[] = {{172, 173}, {176, 176}};
constexpr CvRange timeCvs[] = {{173, 175}}; // the times are tried from the position in CV173
constexpr CvRange firstServoAddress[] = {{11, 12}};
constexpr OptionalCvs otherServoAddresses[] = {
    {{13, 14}, withServos}, {{248, 248}, receivers}, {{250, 250}, receivers}};

constexpr EditorNeeds addressNeeds = {{}, addressCvs, secondAddressSwitch};
constexpr EditorNeeds brakingNeeds = {drivingVehicles, distanceCvs};
constexpr EditorNeeds speedStepNeeds = {drivingVehicles, speedStepCvs};
constexpr EditorNeeds baseAndTopNeeds = {drivingVehicles, baseAndTopCvs};
constexpr EditorNeeds presetNeeds = {.models = drivingVehicles, .cvs = speedStepCvs, .opensUnlisted = true};
constexpr EditorNeeds positionNeeds = {.models = withServos, .cvs = positionCvs, .wantsValues = true};
constexpr EditorNeeds timeNeeds = {.models = withServos, .cvs = timeCvs, .wantsValues = true};
constexpr EditorNeeds servoAddressNeeds = {withServos, firstServoAddress, otherServoAddresses};

template <typename Range, typename Value>
bool contains(const Range& range, const Value& value)
{
    return std::find(range.begin(), range.end(), value) != range.end();
}

template <typename Condition>
std::vector<int> cvsWithout(std::span<const CvRange> ranges, const Condition& condition)
{
    std::vector<int> missing;
    for (const CvRange& range : ranges) {
        for (int cv = range.first; cv <= range.last; ++cv) {
            if (!condition(cv))
                missing.push_back(cv);
        }
    }
    return missing;
}

Text namesOf(std::span<const Model> models)
{
    Text names;
    for (const Model model : models)
        names += (names.empty() ? Text() : u", ") + Text(modelName(model));
    return names;
}

} // namespace

Text namesOfCvs(const std::vector<int>& cvs)
{
    Text names;
    for (std::size_t start = 0; start < cvs.size();) {
        std::size_t end = start;
        while (end + 1 < cvs.size() && cvs[end + 1] == cvs[end] + 1)
            ++end;
        names += joined({names.empty() ? u"CV" : u", CV", textFromNumber(cvs[start])});
        if (end > start)
            names += joined({u"-", textFromNumber(cvs[end])});
        start = end + 1;
    }
    return names;
}

const EditorNeeds& needsOf(Editor editor)
{
    switch (editor) {
    case Editor::addresses:
        return addressNeeds;
    case Editor::braking:
        return brakingNeeds;
    case Editor::speedTable:
        return speedStepNeeds;
    case Editor::baseAndTop:
        return baseAndTopNeeds;
    case Editor::presets:
        return presetNeeds;
    case Editor::bothServos:
    case Editor::firstServo:
    case Editor::secondServo:
        return positionNeeds;
    case Editor::servoTimes:
        return timeNeeds;
    case Editor::servoAddresses:
        break;
    }
    return servoAddressNeeds;
}

std::optional<Text> whyNotOpen(const EditorNeeds& needs, const CvSet& set, const LanguageTables& texts)
{
    if (set.isEmpty())
        return needs.opensUnlisted ? std::nullopt : std::optional(texts.message(Message::editorNeedsList));
    const Text model(modelName(set.profile.model));
    if (!needs.models.empty() && !contains(needs.models, set.profile.model)) {
        return texts.message(Message::editorNotForModel, {model, namesOf(needs.models)});
    }
    const auto unused = cvsWithout(needs.cvs, [&](int cv) { return isUsed(set.table, cv); });
    if (!unused.empty()) {
        return texts.message(Message::editorLacksCvs, {model, namesOfCvs(unused)});
    }
    const auto unknown = cvsWithout(needs.cvs, [&](int cv) { return isCvValue(set.table.value(cv)); });
    if (needs.wantsValues && !unknown.empty()) {
        return texts.message(Message::editorLacksValues, {namesOfCvs(unknown)});
    }
    return std::nullopt;
}

std::optional<Text> whyNotOpen(Editor editor, const CvSet& set, const LanguageTables& texts)
{
    return whyNotOpen(needsOf(editor), set, texts);
}

bool dealsWith(Editor editor, const CvSet& set, int cv)
{
    const auto optional = needsOf(editor).optional;
    return std::any_of(optional.begin(), optional.end(), [&](const OptionalCvs& one) {
        return cv >= one.cvs.first && cv <= one.cvs.last && contains(one.models, set.profile.model) &&
               isUsed(set.table, cv);
    });
}

} // namespace karvo
