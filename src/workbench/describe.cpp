#include "workbench/describe.h"

#include "cvdata/cv_use.h"
#include "cvdata/description_choice.h"
#include "cvdata/receiver_releases.h"
#include "program/path_text.h"
#include "workbench/recovery.h"

#include <algorithm>

namespace karvo
{

namespace
{

// A description without a value here says that the model has no such CV.
constexpr int optionalCv = 153;

// Each read and each list would tell of it again.
void tellOnce(Workbench& bench, const std::string& fileName, Message message, const Text& second = {},
              const Text& third = {})
{
    const auto path = bench.state.programFolder / fileName;
    if (!bench.state.faultyFiles.insert(path).second)
        return;
    bench.prompts.message(bench.state.texts.message(message, {pathText(path), second, third}),
                          PromptIcon::warning);
}

void tellOfLines(Workbench& bench, const std::string& fileName, std::size_t count, int first)
{
    tellOnce(bench, fileName, Message::descriptionFaults, textFromNumber(static_cast<long long>(count)),
             textFromNumber(first));
}

// Nothing, after a message, when it can not be read or is none.
std::optional<ExpertFile> loadExpertFile(Workbench& bench, const std::string& fileName)
{
    const auto path = bench.state.programFolder / fileName;
    const auto content = bench.files.readWhole(path, textFileLimit);
    if (!content) {
        showCannotOpen(bench, path);
        return std::nullopt;
    }
    auto file = parseExpertFile(*content);
    if (!file)
        tellOnce(bench, fileName, Message::notAnExpertFile);
    else if (!file->faultyLines.empty())
        tellOfLines(bench, fileName, file->faultyLines.size(), file->faultyLines.front());
    return file;
}

// The words in the language in use of a file that has one name for all; without it its own words stay.
void takeExpertWords(Workbench& bench, ExpertFile& file, const std::string& companionName)
{
    const auto content = bench.files.readWhole(bench.state.programFolder / companionName, textFileLimit);
    const auto companion = content ? parseExpertFile(*content) : std::nullopt;
    if (!companion)
        return tellOnce(bench, companionName, Message::wordsMissing);
    if (!companion->faultyLines.empty())
        tellOfLines(bench, companionName, companion->faultyLines.size(), companion->faultyLines.front());
    for (const auto& [cv, entry] : companion->entries)
        file.entries[cv] = entry;
}

std::optional<Description> readDescription(Workbench& bench, const std::string& fileName)
{
    const auto content = bench.files.readWhole(bench.state.programFolder / fileName, textFileLimit);
    return content ? parseDescription(*content) : std::nullopt;
}

void takeTexts(CvTable& table, int row, const CvTable& other, int otherRow)
{
    for (const Column column :
         {Column::text, Column::explanation, Column::values, Column::advice, Column::bits, Column::words})
        table.at(row, column) = other.at(otherRow, column);
}

// The texts of the companion; rows that it does not describe keep the words they have.
void takeCompanionTexts(Workbench& bench, CvTable& table, const std::string& companionName)
{
    const auto companion = readDescription(bench, companionName);
    if (!companion)
        return tellOnce(bench, companionName, Message::wordsMissing);
    reportFaults(bench, companionName, companion->faults);
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (companion->table.describes(row))
            takeTexts(table, row, companion->table, row);
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

std::optional<Description> loadDescription(Workbench& bench, const std::string& fileName,
                                           const DecoderProfile& profile)
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
        bench.prompts.message(texts.message(Message::notADescription, {pathText(path)}), PromptIcon::warning);
        return std::nullopt;
    }
    const auto companionName = textCompanionName(fileName, bench.state.language);
    if (!companionName.empty())
        takeCompanionTexts(bench, description->table, companionName);
    if (releaseOf(profile))
        leaveOutLaterCvs(*description, profile);
    else
        addFirmwareRemarks(description->table, texts);
    return description;
}

void addFirmwareRemarks(CvTable& table, const LanguageTables& texts)
{
    addReleaseRemarks(table, texts.message(Message::onlyFromFirmware));
}

void takeDescription(Workbench& bench, Description description, const std::string& fileName)
{
    CvSet& set = bench.state.set;
    set.table = std::move(description.table);
    set.descriptionLines = std::move(description.lines);
    set.rowCount = description.rowCount;
    set.descriptionPath = bench.state.programFolder / fileName;
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
    const auto unused = unusedCvOf(description.table);
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (!set.table.describes(row) || !description.table.describes(row))
            continue;
        // What the list's decoder lacks stays unused in every language.
        const int source = isUsed(set.table, row) ? row : unused.value_or(row);
        takeTexts(set.table, row, description.table, source);
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
    auto file = loadExpertFile(bench, fileName);
    if (!file)
        return;
    const auto companionName = textCompanionName(fileName, bench.state.language);
    if (!companionName.empty())
        takeExpertWords(bench, *file, companionName);
    set.expert = std::move(file->entries);
    std::erase_if(set.expert, [&](const auto& entry) { return !isUsed(set.table, entry.first); });
}

void fillList(Workbench& bench)
{
    ProgramState& state = bench.state;
    CvSet& set = state.set;
    set.list = fill_list1(
        {set.table, set.profile, set.rawReply, state.texts.message(Message::unitOfSpeedStep),
         state.language != LanguageCode::english, &set.expert, state.texts.caption(Caption::expertLabel),
         set.baseline ? &*set.baseline : nullptr, state.texts.caption(Caption::changedMark),
         state.texts.caption(Caption::speedTableGroup)});
    set.loadedData = loadedDataText(state);
    keepRecovery(bench);
    bench.view.listChanged();
}

void reportFaults(Workbench& bench, const std::string& fileName, const std::vector<DescriptionFault>& faults)
{
    if (faults.empty())
        return;
    const auto end = std::find_if(faults.begin(), faults.end(), [](const DescriptionFault& fault) {
        return fault.kind == DescriptionFault::Kind::noEnd;
    });
    if (end != faults.end())
        return tellOnce(bench, fileName, Message::descriptionCutOff, textFromNumber(end->line));
    const auto first = std::min_element(
        faults.begin(), faults.end(),
        [](const DescriptionFault& one, const DescriptionFault& other) { return one.line < other.line; });
    tellOfLines(bench, fileName, faults.size(), first->line);
}

void clearDisplay(Workbench& bench)
{
    bench.state.set = CvSet();
    bench.state.askNoMore.reset();
    keepRecovery(bench);
    bench.view.showStatus(Text());
    bench.view.listChanged();
}

} // namespace karvo
