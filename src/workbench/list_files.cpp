#include "workbench/list_files.h"

#include "cvdata/cv_kind.h"
#include "cvdata/cv_use.h"
#include "cvdata/described_set.h"
#include "cvdata/description_choice.h"
#include "cvdata/expert_choice.h"
#include "cvdata/list_header.h"
#include "cvdata/receiver_releases.h"
#include "language/file_trouble.h"
#include "program/path_text.h"
#include "workbench/library_faults.h"
#include "workbench/list_notes.h"
#include "workbench/put_on_bench.h"

#include <algorithm>

namespace karvo
{

namespace
{

void warn(Prompts& prompts, const LanguageTables& texts, Message message, std::initializer_list<Text> words)
{
    prompts.message(texts.message(message, words), PromptIcon::warning);
}

void showRefusal(Prompts& prompts, const LanguageTables& texts, const ListRefusal& refusal,
                 const std::filesystem::path& path)
{
    warn(prompts, texts,
         refusal.kind == ListRefusal::Kind::noRow ? Message::notAListFile : Message::listFileTooLong,
         {pathText(path), textFromNumber(refusal.line)});
}

// Nothing after a message.
std::optional<Bytes> contentOf(Workbench& bench, const std::filesystem::path& path)
{
    auto content = bench.files.readWhole(path, textFileLimit);
    if (content)
        return content;
    if (bench.files.sizeOf(path) > textFileLimit)
        warn(bench.prompts, bench.state.texts, Message::listFileTooLarge,
             {pathText(path), textFromNumber(textFileLimit / megabyte)});
    else
        showCannotOpen(bench.prompts, bench.state.texts, path);
    return std::nullopt;
}

std::optional<ListFile> parsedList(Workbench& bench, std::span<const std::uint8_t> content,
                                   const std::filesystem::path& path)
{
    auto parsed = parseListFile(content);
    if (auto* const list = std::get_if<ListFile>(&parsed))
        return std::move(*list);
    showRefusal(bench.prompts, bench.state.texts, std::get<ListRefusal>(parsed), path);
    return std::nullopt;
}

DecoderProfile profileOf(const ListModel& model, const ListFile& list)
{
    constexpr int receiverLevelCv = 72;
    DecoderProfile profile = model.profile;
    profile.processor = list.processor.value_or(profile.processor);
    // A version below 4 stands in the header alone.
    if (!versionInHeader(list.header()))
        profile.firmwareVersion = list.firmwareVersion.value_or(0);
    if (isReceiver(profile.typeCode))
        profile.firmwareLevel = list.table.value(receiverLevelCv).value_or(profile.firmwareLevel);
    return profile;
}

bool lacksFields(const CvTable& table, int row)
{
    return table.describes(row) && table.at(row, Column::lowerLimit).empty() &&
           table.at(row, Column::upperLimit).empty() && table.at(row, Column::factoryValue).empty();
}

void addModelsFields(CvTable& table, const CvTable& model, int row)
{
    for (int column = static_cast<int>(Column::lowerLimit); column <= CvTable::lastColumn; ++column) {
        if (column != static_cast<int>(Column::sharedValue) && table.at(row, column).empty())
            table.at(row, column) = model.at(row, column);
    }
}

// The fields that this program has given a meaning of its own since there are lists.
constexpr Column laterColumns[] = {Column::groups, Column::words, Column::unit, Column::marks};

std::vector<Column> columnsWithout(const CvTable& table)
{
    std::vector<Column> columns;
    for (const Column column : laterColumns) {
        if (!carries(table, column))
            columns.push_back(column);
    }
    return columns;
}

// A list of other hands may hold numbers, values and names alone, and one that was saved before there were
// marks, groups, words and units has none: they are the model's then. In the file nothing is added by this.
void addModelsFields(CvTable& table, const CvTable& model)
{
    const auto takenColumns = columnsWithout(table);
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (!table.describes(row) || !model.describes(row))
            continue;
        if (lacksFields(table, row))
            addModelsFields(table, model, row);
        if (!isUsed(table, row))
            continue;
        for (const Column column : takenColumns)
            table.at(row, column) = model.at(row, column);
    }
}

bool isComplete(const CvTable& table)
{
    for (int row = 1; row <= CvTable::lastRow; ++row) {
        if (lacksFields(table, row))
            return false;
    }
    return columnsWithout(table).empty();
}

// Returns what is wrong with the files of the model.
std::vector<LibraryFault> completeFromModel(Workbench& bench, CvSet& set)
{
    std::vector<LibraryFault> faults;
    if (!isComplete(set.table) && bench.files.exists(set.descriptionPath)) {
        auto description = bench.library().describe(set.descriptionPath.filename().string());
        if (description.content)
            addModelsFields(set.table, description.content->table);
        faults = std::move(description.faults);
    }
    addReleaseRemarks(set.table, bench.state.texts.message(Message::onlyFromFirmware));
    return faults;
}

void takeList(Workbench& bench, ListFile list, const DecoderProfile& profile,
              const std::filesystem::path& path)
{
    CvSet set;
    set.fileProcessor = list.processor;
    set.table = std::move(list.table);
    set.descriptionLines = std::move(list.lines);
    set.rowCount = list.rowCount;
    set.profile = profile;
    set.modelCode = modelCode(profile.model);
    set.offlineItem = openedListItem;
    set.listPath = path;
    const auto language = bench.state.language;
    set.descriptionPath = bench.state.programFolder / descriptionFileName(profile, language);
    SetFaults faults{completeFromModel(bench, set), {}};
    const auto expertFile = listExpertFileName(set, language);
    takeKnowledge(set, bench.library().expertKnowledge(expertFile, set.table), faults.ofFiles);
    bench.state.askNoMore.reset();
    putOnBench(bench, std::move(set), faults);
}

// "Bus 1.5" has no extension, only a dot.
std::filesystem::path withListExtension(std::filesystem::path path)
{
    if (lowerCase(pathText(path.extension())) != u".kvr")
        path += std::string(listFileExtension);
    return path;
}

// A name of its own, so that no backup takes the place of another.
std::filesystem::path backupPath(Files& files, const Clock& clock, const std::filesystem::path& folder,
                                 const CvSet& set)
{
    const DateTime now = clock.now();
    const Text stem =
        u"KARVO " + Text(modelName(set.profile.model)) + u" " + dateText(now) + u" " + timeText(now);
    for (int number = 1;; ++number) {
        const Text suffix = number == 1 ? Text() : u" (" + textFromNumber(number) + u")";
        auto path = folder / utf8FromText(stem + suffix).append(listFileExtension);
        if (!files.exists(path))
            return path;
    }
}

} // namespace

FileRequest listFileRequest(Workbench& bench, const Text& title)
{
    const auto& folder = bench.state.userFolders.cvLists.own;
    // Where it can not be made the dialog starts elsewhere, and saving says what is wrong.
    bench.files.makeFolder(folder);
    return {title, folder, u"*.kvr", u"kvr", pathText(bench.state.set.listPath.filename())};
}

bool mayReplaceSet(Workbench& bench)
{
    if (!bench.state.set.unsavedChanges)
        return true;
    switch (bench.prompts.saveChanges(bench.state.texts.message(Message::unsavedChangesQuestion))) {
    case SaveChoice::save:
        return saveList(bench, bench.state.texts.caption(Caption::saveButton));
    case SaveChoice::discard:
        return true;
    case SaveChoice::cancel:
        break;
    }
    return false;
}

bool openChosenList(Workbench& bench, const Text& title)
{
    if (bench.state.lineBusy || !mayReplaceSet(bench))
        return false;
    auto request = listFileRequest(bench, title);
    request.name.clear();
    const auto path = bench.prompts.openFile(request);
    return path && openList(bench, *path);
}

std::optional<ListFile> readListFile(Workbench& bench, const std::filesystem::path& path)
{
    const auto content = contentOf(bench, path);
    return content ? parsedList(bench, *content, path) : std::nullopt;
}

bool openList(Workbench& bench, const std::filesystem::path& path)
{
    const auto content = contentOf(bench, path);
    return content && takeListContent(bench, *content, path);
}

bool takeListContent(Workbench& bench, std::span<const std::uint8_t> content,
                     const std::filesystem::path& path)
{
    if (bench.state.lineBusy)
        return false;
    auto list = parsedList(bench, content, path);
    if (!list)
        return false;
    const auto model = modelOfHeader(list->header());
    if (!model) {
        warn(bench.prompts, bench.state.texts, Message::listWithoutModel, {pathText(path)});
        return false;
    }
    const Text notes = listNotes(*list, path, bench.state.texts);
    const DecoderProfile profile = profileOf(*model, *list);
    takeList(bench, std::move(*list), profile, path);
    if (!notes.empty())
        bench.prompts.message(notes, PromptIcon::warning);
    return true;
}

bool saveListAs(Workbench& bench, const std::filesystem::path& path)
{
    CvSet& set = bench.state.set;
    if (set.isEmpty()) {
        bench.prompts.message(bench.state.texts.message(Message::nothingToSave), PromptIcon::information);
        return false;
    }
    const auto named = withListExtension(path);
    if (named != path && bench.files.exists(named)) {
        if (!bench.prompts.question(
                bench.state.texts.message(Message::replaceFileQuestion, {pathText(named)})))
            return false;
    }
    if (const auto error = bench.files.saveAtomically(named, save_data(set))) {
        warn(bench.prompts, bench.state.texts, Message::cannotSaveFile,
             {pathText(named), fileTroubleText(error, bench.state.texts, bench.files)});
        return false;
    }
    set.listPath = named;
    set.unsavedChanges = false;
    fillList(bench);
    return true;
}

bool saveList(Workbench& bench, const Text& title)
{
    if (!bench.state.set.listPath.empty())
        return saveListAs(bench, std::filesystem::path(bench.state.set.listPath));
    return saveListUnderNewName(bench, title);
}

bool saveListUnderNewName(Workbench& bench, const Text& title)
{
    if (bench.state.set.isEmpty()) {
        bench.prompts.message(bench.state.texts.message(Message::nothingToSave), PromptIcon::information);
        return false;
    }
    const auto path = bench.prompts.saveFile(listFileRequest(bench, title));
    return path && saveListAs(bench, *path);
}

KeptBackup keepBackup(Files& files, const LanguageTables& texts, const Clock& clock,
                      const UserFolders& folders, const CvSet& set)
{
    const auto& folder = folders.cvLists.own;
    auto error = files.makeFolder(folder);
    const auto path = backupPath(files, clock, folder, set);
    if (!error)
        error = files.saveAtomically(path, listFileContent(set));
    if (error)
        return {{}, fileTroubleText(error, texts, files)};
    return {path};
}

std::string listExpertFileName(const CvSet& set, LanguageCode language)
{
    const auto model = modelOfHeader(set.descriptionLines[1]);
    const auto lists = offlineLists();
    const auto preset = std::find_if(lists.begin(), lists.end(), [&](const OfflineList& list) {
        return model && model->isPreset && !list.variantStem.empty() && list.model == set.profile.model;
    });
    return preset == lists.end() ? expertFileName(set.profile, language)
                                 : offlineExpertFileName(*preset, offlineProfile(*preset), language);
}

} // namespace karvo
