#include "workbench/language_change.h"

#include "cvdata/described_set.h"
#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "language/language_loader.h"
#include "workbench/library_faults.h"
#include "workbench/list_files.h"
#include "workbench/put_on_bench.h"

namespace karvo
{

namespace
{

std::string fileNameInUse(const ProgramState& state)
{
    const OfflineList* const offline = offlineListOf(state.set.offlineItem);
    return offline != nullptr ? offlineDescriptionFileName(*offline, state.set.offlineVariant, state.language)
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

void storeLanguage(Settings& settings, LanguageCode code)
{
    settings.save("Parameter", "Language", textFromNumber(static_cast<int>(code)));
}

void describeAnew(Workbench& bench)
{
    CvSet& set = bench.state.set;
    if (set.isEmpty())
        return;
    const DescriptionLibrary library = bench.library();
    auto description = library.describe(fileNameInUse(bench.state), set.profile);
    SetFaults faults{std::move(description.faults), description.leftOut};
    if (!description.content)
        return tellFaults(bench, faults.ofFiles);
    if (set.isFromFile())
        takeWords(set, description);
    else
        describeAgain(set, std::move(description));
    takeKnowledge(set, library.expertKnowledge(expertFileNameInUse(bench.state), set.table), faults.ofFiles);
    showAnew(bench, faults);
}

} // namespace karvo
