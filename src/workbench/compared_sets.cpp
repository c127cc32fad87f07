#include "workbench/compared_sets.h"

#include "cvdata/description_choice.h"
#include "cvdata/list_header.h"
#include "program/path_text.h"
#include "workbench/library_faults.h"
#include "workbench/list_files.h"
#include "workbench/list_notes.h"

#include <algorithm>
#include <iterator>

namespace karvo
{

namespace
{

constexpr ComparedModel models[] = {
    {"mnu_KV04", "mnu_KV04", u"  KV04"},
    {"mnu_KV04_neu", "mnu_KV04_neu", u"  KV04"},
    {"mnu_KV05", "mnu_KV05", u"  KV05"},
    {"mnu_KV06", "mnu_KV06", u"  KV06"},
    {"mnu_KV07", "mnu_kv07", u"  KV07"},
    {"mnu_KV08", "mnu_KV08", u"  KV08"},
    {"mnu_karvo_xt_list", "mnu_karvo_xt_list", u" KV-XT"},
};

Text labelOf(Model model)
{
    return isReceiver(model) ? Text(u" KV-XT") : Text(u"  ").append(modelName(model));
}

} // namespace

std::span<const ComparedModel> comparedModels()
{
    return models;
}

CvTable wordsOf(Workbench& bench, const ListFile& list)
{
    const auto model = modelOfHeader(list.header());
    auto description = model
                           ? describeOrTell(bench, descriptionFileName(model->profile, bench.state.language))
                           : std::nullopt;
    if (!description)
        return list.table;
    return std::move(description->table);
}

SpeedSteps speedStepsOf(const ListFile& list)
{
    const auto model = modelOfHeader(list.header());
    return model ? speedStepsOf(model->profile.model) : SpeedSteps::asRows;
}

ComparedSets::ComparedSets(Workbench& bench) : bench_(bench)
{
}

bool ComparedSets::chooseModel(std::string_view menuItem)
{
    const auto* const model =
        std::find_if(std::begin(models), std::end(models),
                     [&](const ComparedModel& one) { return one.menuItem == menuItem; });
    const OfflineList* const list = model == std::end(models) ? nullptr : offlineListOf(model->offlineItem);
    if (list == nullptr)
        return false;
    auto description = describeOrTell(bench_, offlineDescriptionFileName(*list, 0, bench_.state.language));
    if (!description)
        return false;
    words_ = std::move(description->table);
    model_ = model;
    return true;
}

std::optional<ComparedSets::Side> ComparedSets::read(const std::filesystem::path& path)
{
    auto list = readListFile(bench_, path);
    if (!list)
        return std::nullopt;
    const Text notes = listNotes(*list, path, bench_.state.texts);
    if (!notes.empty())
        bench_.prompts.message(notes, PromptIcon::warning);
    return Side{pathText(path), std::move(*list)};
}

bool ComparedSets::openFirst(const std::filesystem::path& path)
{
    auto side = read(path);
    if (!side)
        return false;
    first_ = std::move(side);
    return true;
}

bool ComparedSets::openSecond(const std::filesystem::path& path)
{
    auto side = read(path);
    if (!side)
        return false;
    second_ = std::move(side);
    return true;
}

Text ComparedSets::firstName() const
{
    const auto side = firstSide();
    return side ? side->name : Text();
}

std::optional<CvSide> ComparedSets::firstSide() const
{
    if (first_)
        return sideOf(first_->list, first_->name);
    if (!hasBenchSet())
        return std::nullopt;
    const CvSet& set = bench_.state.set;
    return sideOf(set, set.isOffline()
                           ? set.loadedData
                           : bench_.state.texts.caption(Caption::comparedVehicle, {set.loadedData}));
}

std::optional<Model> ComparedSets::modelOfSides() const
{
    if (hasBenchSet())
        return bench_.state.set.profile.model;
    for (const auto* const side : {&first_, &second_}) {
        const auto model = *side ? modelOfHeader((*side)->list.header()) : std::nullopt;
        if (model)
            return model->profile.model;
    }
    return std::nullopt;
}

Text ComparedSets::modelLabel() const
{
    if (model_ != nullptr)
        return Text(model_->label);
    const auto model = modelOfSides();
    return model ? labelOf(*model) : Text();
}

std::optional<Comparison> ComparedSets::compare()
{
    const auto first = firstSide();
    if (!first || !second_)
        return std::nullopt;
    const CvSide second = sideOf(second_->list, second_->name);
    if (const auto refusal = comparisonRefusal(*first, second, bench_.state.texts)) {
        bench_.prompts.message(*refusal, PromptIcon::warning);
        return std::nullopt;
    }
    const auto model = modelOfSides();
    const auto steps = model ? speedStepsOf(*model) : SpeedSteps::asRows;
    if (model_ != nullptr)
        return karvo::compare(*first, second, words_, steps);
    if (hasBenchSet())
        return karvo::compare(*first, second, bench_.state.set.table, steps);
    return karvo::compare(*first, second, wordsOf(bench_, first_->list), steps);
}

std::optional<Text> ComparedSets::lookUp(TextView answer) const
{
    const LanguageTables& texts = bench_.state.texts;
    if (second_)
        return lookedUpValues(second_->list.table, answer, texts);
    const auto first = firstSide();
    return first ? lookedUpValues(*first->table, answer, texts) : std::nullopt;
}

} // namespace karvo
