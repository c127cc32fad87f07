#include "workbench/describe.h"

#include "cvdata/description_choice.h"
#include "program/path_text.h"
#include "workbench/recovery.h"

namespace karvo
{

namespace
{

// A description without a value here says that the model has no such CV.
constexpr int optionalCv = 153;

std::optional<ExpertFile> readExpertFile(Workbench& bench, const std::string& fileName)
{
    const auto content = bench.files.readWhole(bench.state.programFolder / fileName, textFileLimit);
    return content ? parseExpertFile(*content) : std::nullopt;
}

std::optional<Description> readDescription(Workbench& bench, const std::string& fileName)
{
    const auto content = bench.files.readWhole(bench.state.programFolder / fileName, textFileLimit);
    return content ? parseDescription(*content) : std::nullopt;
}

void takeTexts(CvTable& table, const CvTable& other, int row)
{
    for (const Column column :
         {Column::text, Column::explanation, Column::values, Column::advice, Column::bits})
        table.at(row, column) = other.at(row, column);
}

// The texts of the companion; rows that it does not describe keep the words they have.
void takeCompanionTexts(CvTable& table, const CvTable& companion)
{
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (companion.describes(row))
            takeTexts(table, companion, row);
    }
}

Text versionText(const LanguageTables& texts, const DecoderProfile& profile)
{
    return texts.caption(Caption::firmware) + u" = " + textFromNumber(profile.firmwareVersion);
}

Text firmwareText(const LanguageTables& texts, const DecoderProfile& profile)
{
    return versionText(texts, profile) + u"  " + texts.caption(Caption::subLevel) + u" = " +
           textFromNumber(profile.subLevel);
}

// What is loaded, and from which file it has its words.
Text loadedDataText(const ProgramState& state)
{
    const CvSet& set = state.set;
    const Text type = typeText(set.profile, state.texts) + u"  ";
    const bool hasOwnFile = set.isFromFile() && !set.listPath.empty();
    const Text file = u" | " + pathText((hasOwnFile ? set.listPath : set.descriptionPath).filename());
    if (set.isFromFile())
        return type + versionText(state.texts, set.profile) + file;
    return type +
           (set.isOffline() ? state.texts.caption(Caption::offlineList)
                            : firmwareText(state.texts, set.profile)) +
           file;
}

} // namespace

void showCannotOpen(Workbench& bench, const std::filesystem::path& path)
{
    const LanguageTables& texts = bench.state.texts;
    bench.prompts.message(texts.message(Message::cannotOpenFile) + u" " + pathText(path) + Text(lineBreak) +
                              texts.message(Message::cannotOpenFileAdvice),
                          PromptIcon::warning);
}

Text typeText(const DecoderProfile& profile, const LanguageTables& texts)
{
    return profile.isOlderKv04() ? texts.message(Message::olderKv04) : Text(modelName(profile.model));
}

std::optional<Description> loadDescription(Workbench& bench, const std::string& fileName)
{
    const LanguageTables& texts = bench.state.texts;
    const auto path = bench.state.programFolder / fileName;
    const auto content = bench.files.readWhole(path, textFileLimit);
    if (!content) {
        showCannotOpen(bench, path);
        return std::nullopt;
    }
    auto description = parseDescription(*content);
    if (!description) {
        const Text arguments[] = {pathText(path)};
        bench.prompts.message(filledIn(texts.message(Message::notADescription), arguments),
                              PromptIcon::warning);
        return std::nullopt;
    }
    const auto companionName = textCompanionName(fileName, bench.state.language);
    if (const auto companion = companionName.empty() ? std::nullopt : readDescription(bench, companionName))
        takeCompanionTexts(description->table, companion->table);
    return description;
}

void takeDescription(Workbench& bench, Description description, const std::string& fileName)
{
    CvSet& set = bench.state.set;
    set.table = std::move(description.table);
    set.descriptionLines = std::move(description.lines);
    set.rowCount = description.rowCount;
    set.descriptionPath = bench.state.programFolder / fileName;
}

DecoderProfile profileOfImage(const ProgramState& state)
{
    return profileOf(state.link.typeCode, state.link.identification, state.image, state.receiver);
}

void takeValues(CvTable& table, const CvImage& image)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const bool hasNone = cv == optionalCv && table.at(cv, Column::value).empty();
        if (table.describes(cv) && !hasNone)
            table.setValue(cv, image[static_cast<std::size_t>(cv)]);
    }
}

void takeWords(Workbench& bench, const Description& description, const std::string& fileName)
{
    CvSet& set = bench.state.set;
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (set.table.describes(row) && description.table.describes(row))
            takeTexts(set.table, description.table, row);
    }
    set.descriptionPath = bench.state.programFolder / fileName;
}

void takeExpertFile(Workbench& bench, const std::string& fileName)
{
    CvSet& set = bench.state.set;
    set.expertPath = bench.state.programFolder / fileName;
    set.expert.clear();
    if (!bench.state.expert)
        return;
    auto file = readExpertFile(bench, fileName);
    if (!file) {
        showCannotOpen(bench, set.expertPath);
        return;
    }
    const auto companionName = textCompanionName(fileName, bench.state.language);
    if (const auto companion = companionName.empty() ? std::nullopt : readExpertFile(bench, companionName)) {
        for (const auto& [cv, entry] : companion->entries)
            file->entries[cv] = entry;
    }
    set.expert = std::move(file->entries);
}

void fillList(Workbench& bench)
{
    ProgramState& state = bench.state;
    CvSet& set = state.set;
    set.list = fill_list1(
        {set.table, set.profile, set.rawReply, state.texts.message(Message::unitOfSpeedStep),
         state.language != LanguageCode::english, &set.expert, state.texts.caption(Caption::expertLabel),
         set.baseline ? &*set.baseline : nullptr, state.texts.caption(Caption::changedMark)});
    set.loadedData = loadedDataText(state);
    keepRecovery(bench);
    bench.view.listChanged();
}

void reportFaults(Workbench& bench, const std::string& fileName, const std::vector<DescriptionFault>& faults)
{
    if (faults.empty())
        return;
    const Text arguments[] = {pathText(bench.state.programFolder / fileName),
                              textFromNumber(static_cast<long long>(faults.size())),
                              textFromNumber(faults.front().line)};
    bench.prompts.message(filledIn(bench.state.texts.message(Message::descriptionFaults), arguments),
                          PromptIcon::warning);
}

void clearDisplay(Workbench& bench)
{
    bench.state.set = CvSet();
    keepRecovery(bench);
    bench.view.showStatus(Text());
    bench.view.listChanged();
}

} // namespace karvo
