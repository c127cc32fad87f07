#include "workbench/offline_list.h"

#include "cvdata/described_set.h"
#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "workbench/library_faults.h"
#include "workbench/put_on_bench.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace karvo
{

namespace
{

struct FileNames {
    std::string description;
    std::string expert;
};

// Comes before the file is opened, and behind what is wrong with the description.
void announceExpertFile(Workbench& bench, const std::string& fileName, std::vector<LibraryFault>& faults)
{
    tellFaults(bench, std::exchange(faults, {}));
    bench.prompts.message(
        joined({bench.state.texts.message(Message::expertFileNotice), u" ", textFromUtf8(fileName)}),
        PromptIcon::information);
}

// The description's own values as the list on the bench.
bool showDescription(Workbench& bench, const DecoderProfile& profile, std::string_view menuItem,
                     const FileNames& files)
{
    const DescriptionLibrary library = bench.library();
    auto description = library.describe(files.description, profile);
    SetFaults faults{std::move(description.faults), description.leftOut};
    if (!description.content) {
        tellFaults(bench, faults.ofFiles);
        return false;
    }
    CvSet set = setOf(profile, std::move(description));
    set.offlineItem = menuItem;
    set.offlineVariant = bench.state.automaticVariant;
    if (bench.state.expert)
        announceExpertFile(bench, files.expert, faults.ofFiles);
    takeKnowledge(set, library.expertKnowledge(files.expert, set.table), faults.ofFiles);
    bench.state.askNoMore.reset();
    putOnBench(bench, std::move(set), faults);
    return true;
}

std::optional<int> askVariant(Workbench& bench, const OfflineList& list)
{
    const LanguageTables& texts = bench.state.texts;
    const bool isBus = list.variantStem.find("_Bus_") != std::string_view::npos;
    const int first = static_cast<int>(isBus ? Caption::busVariantFirst : Caption::fireEngineVariantFirst);
    std::vector<Text> options;
    options.reserve(automaticVariants);
    for (int variant = 0; variant < automaticVariants; ++variant)
        options.push_back(texts.caption(static_cast<Caption>(first + variant)));
    const auto current =
        static_cast<std::size_t>(std::clamp(bench.state.automaticVariant, 0, automaticVariants - 1));
    const auto chosen = bench.prompts.choice(texts.caption(Caption::variantTitle),
                                             texts.caption(Caption::variantPrompt), options, current);
    return chosen ? std::optional<int>(static_cast<int>(*chosen)) : std::nullopt;
}

} // namespace

bool confirmOfflineList(Workbench& bench)
{
    if (bench.state.link.identified)
        return true;
    const LanguageTables& texts = bench.state.texts;
    return bench.prompts.question(texts.message(Message::offlineListQuestion1) + Text(lineBreak) +
                                  texts.message(Message::offlineListQuestion2) + Text(lineBreak) +
                                  texts.message(Message::offlineListQuestion3));
}

bool showChosenOfflineList(Workbench& bench, std::string_view menuItem)
{
    const OfflineList* const list = offlineListOf(menuItem);
    if (list == nullptr || list->variantStem.empty() || bench.state.lineBusy)
        return showOfflineList(bench, menuItem);
    const auto chosen = askVariant(bench, *list);
    if (!chosen)
        return false;
    // The list that is shown stays that of its own variant when the other can not be read.
    const int before = std::exchange(bench.state.automaticVariant, *chosen);
    if (showOfflineList(bench, menuItem))
        return true;
    bench.state.automaticVariant = before;
    return false;
}

bool showOfflineList(Workbench& bench, std::string_view menuItem)
{
    const OfflineList* const list = offlineListOf(menuItem);
    if (list == nullptr || bench.state.lineBusy)
        return false;
    const auto language = bench.state.language;
    const auto fileName = offlineDescriptionFileName(*list, bench.state.automaticVariant, language);
    if (fileName.empty())
        return false;
    const DecoderProfile profile = offlineProfile(*list, bench.state.set.profile);
    return showDescription(bench, profile, menuItem,
                           {fileName, offlineExpertFileName(*list, profile, language)});
}

bool showStandardList(Workbench& bench)
{
    const CvSet& set = bench.state.set;
    if (set.isEmpty() || bench.state.lineBusy)
        return false;
    if (offlineListOf(set.offlineItem) != nullptr)
        return showOfflineList(bench, std::string(set.offlineItem));
    const DecoderProfile profile = set.profile;
    const auto language = bench.state.language;
    return showDescription(bench, profile, standardListItem,
                           {descriptionFileName(profile, language), expertFileName(profile, language)});
}

} // namespace karvo
