#include "editors/function_sheet.h"

#include <algorithm>

namespace karvo
{

namespace
{

struct Build {
    TextView word;
    Generation generation;
};

constexpr Build builds[] = {{u"LC", Generation::laneControl}, {u"Tacho", Generation::tacho}};

constexpr Model models[] = {Model::kv04, Model::kv05,    Model::kv06,     Model::kv07,
                            Model::kv08, Model::trailer, Model::receiver, Model::xtModule};

} // namespace

const Text& SheetWords::in(LanguageCode language) const
{
    const Text& own = texts_[static_cast<std::size_t>(language)];
    if (!own.empty())
        return own;
    const auto* const any =
        std::find_if(texts_.begin(), texts_.end(), [](const Text& text) { return !text.empty(); });
    return any == texts_.end() ? own : *any;
}

bool SheetWords::empty() const
{
    return in(LanguageCode::german).empty();
}

std::optional<SheetModel> sheetModelOf(TextView word)
{
    const auto blank = word.find(u' ');
    const TextView name = word.substr(0, blank);
    const auto* const model =
        std::find_if(std::begin(models), std::end(models), [&](Model one) { return modelName(one) == name; });
    if (model == std::end(models))
        return std::nullopt;
    if (blank == TextView::npos)
        return SheetModel{*model, std::nullopt};
    const auto* const build = std::find_if(std::begin(builds), std::end(builds), [&](const Build& one) {
        return one.word == trimmed(word.substr(blank));
    });
    if (build == std::end(builds))
        return std::nullopt;
    return SheetModel{*model, build->generation};
}

Text wordOf(const SheetModel& model)
{
    for (const Build& build : builds) {
        if (model.build == build.generation)
            return joined({modelName(model.model), u" ", build.word});
    }
    return Text(modelName(model.model));
}

bool isFor(std::span<const SheetModel> wanted, const DecoderProfile& profile)
{
    return wanted.empty() || std::any_of(wanted.begin(), wanted.end(), [&](const SheetModel& one) {
               return one.model == profile.model && (!one.build || *one.build == profile.generation);
           });
}

const SheetValueSet* FunctionSheet::readyMadeOf(std::string_view wanted) const
{
    const auto found = std::find_if(readyMade.begin(), readyMade.end(), [&](const SheetValueSet& one) {
        return !one.item.empty() && one.item == wanted;
    });
    return found == readyMade.end() ? nullptr : &*found;
}

bool holdsAll(std::span<const CvChange> values, const CvTable& table)
{
    return std::all_of(values.begin(), values.end(),
                       [&](const CvChange& one) { return table.value(one.cv) == one.value; });
}

bool holdsOneOf(std::span<const std::vector<CvChange>> alternatives, const CvTable& table)
{
    return alternatives.empty() ||
           std::any_of(alternatives.begin(), alternatives.end(),
                       [&](const std::vector<CvChange>& values) { return holdsAll(values, table); });
}

} // namespace karvo
