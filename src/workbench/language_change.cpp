#include "workbench/language_change.h"

#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "language/language_loader.h"
#include "workbench/describe.h"
#include "workbench/list_files.h"

namespace karvo
{

namespace
{

std::string fileNameInUse(const ProgramState& state)
{
    const OfflineList* const offline = offlineListOf(state.set.offlineItem);
    return offline != nullptr ? offlineDescriptionFileName(*offline, state.automaticVariant, state.language)
                              : descriptionFileName(state.set.profile, state.language);
}

std::string expertFileNameInUse(const ProgramState& state)
{
    if (state.set.isFromFile())
        return listExpertFileName(state.set, state.language);
    const OfflineList* const offline = offlineListOf(state.set.offlineItem);
    return offline != nullptr ? offlineExpertFileName(*offline, state.set.profile, state.language)
                              : expertFileName(state.set.profile, state.language);
}

void keepValues(const CvTable& from, CvTable& to)
{
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        to.at(row, Column::value) = from.at(row, Column::value);
        to.at(row, Column::sharedValue) = from.at(row, Column::sharedValue);
    }
}

} // namespace

bool useLanguage(Workbench& bench, LanguageCode code)
{
    bench.state.language = code;
    const auto loaded = loadLanguage(bench.state.texts, code, bench.state.programFolder, bench.files);
    if (loaded.missing) {
        bench.prompts.message(missingLanguageFileText(*loaded.missing));
        bench.prompts.endProgram();
        return false;
    }
    if (!loaded.damaged.empty())
        bench.prompts.message(damagedLanguageFileText(bench.state.texts, loaded, code), PromptIcon::warning);
    return true;
}

void storeLanguage(Workbench& bench, LanguageCode code)
{
    bench.settings.save("Parameter", "Language", textFromNumber(static_cast<int>(code)));
}

void describeAnew(Workbench& bench)
{
    CvSet& set = bench.state.set;
    if (set.isEmpty())
        return;
    const auto fileName = fileNameInUse(bench.state);
    auto description = loadDescription(bench, fileName, set.profile);
    if (!description)
        return;
    const auto faults = std::move(description->faults);
    if (set.isFromFile()) {
        takeWords(bench, *description, fileName);
    } else {
        keepValues(set.table, description->table);
        takeDescription(bench, std::move(*description), fileName);
    }
    takeExpertFile(bench, expertFileNameInUse(bench.state));
    fillList(bench);
    reportFaults(bench, fileName, faults);
}

} // namespace karvo
