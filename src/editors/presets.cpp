#include "editors/presets.h"

#include "cvdata/main_list.h"
#include "cvdata/speed_cvs.h"
#include "editors/distance_table.h"
#include "editors/editor_gate.h"
#include "editors/preset_merge.h"
#include "editors/step_edit.h"
#include "program/path_text.h"
#include "workbench/export_files.h"
#include "workbench/library_faults.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace karvo
{

namespace
{

constexpr Preset allPresets[] = {{"Faller", "FS_Faller.fcr", "Faller.bcr"},
                                 {"CI26_1", "FS_CI26_12.fcr", "CI_26_12.bcr"},
                                 {"CI26_2", "FS_CI26_24.fcr", "CI_26_24.bcr"},
                                 {"CI46_1", "FS_CI46_12.fcr", "CI_46_12.bcr"},
                                 {"CI46_2", "FS_CI46_24.fcr", "CI_46_24.bcr"}};

constexpr BasedPreset allBasedPresets[] = {{Caption::presetFaller, "FS_Faller_CV2_CV5.fcr"},
                                           {Caption::preTableCi26Small, "FS_CI26_12_CV2_CV5.fcr"},
                                           {Caption::preTableCi26Large, "FS_CI26_24_CV2_CV5.fcr"},
                                           {Caption::preTableCi46Small, "FS_CI46_12_CV2_CV5.fcr"}};

void warn(Prompts& prompts, const LanguageTables& texts, Message message, std::initializer_list<Text> words)
{
    prompts.message(texts.message(message, words), PromptIcon::warning);
}

// The CV set that a preset is loaded into, or saved from, stands and is of a kind that has its CVs.
bool isSetReady(Workbench& bench, Message missing, Message advice, Editor editor = Editor::presets)
{
    const LanguageTables& texts = bench.state.texts;
    if (bench.state.set.isEmpty()) {
        bench.prompts.message(texts.message(missing) + Text(lineBreak) + Text(lineBreak) +
                                  texts.message(advice),
                              PromptIcon::information);
        return false;
    }
    if (const auto reason = whyNotOpen(editor, bench.state.set, texts)) {
        bench.prompts.message(*reason, PromptIcon::information);
        return false;
    }
    return !bench.state.lineBusy;
}

std::optional<Bytes> readPresetFile(Workbench& bench, const std::filesystem::path& path)
{
    auto content = bench.files.readWhole(path, textFileLimit);
    if (!content)
        showCannotOpen(bench.prompts, bench.state.texts, path);
    return content;
}

void tellFault(Workbench& bench, const std::filesystem::path& path, const SpeedStepFault& fault)
{
    warn(bench.prompts, bench.state.texts,
         fault.kind == SpeedStepFault::Kind::tooLong ? Message::stepFileTooLong : Message::stepFileValueWrong,
         {pathText(path), textFromNumber(fault.line)});
}

void warnOfUnusable(Workbench& bench, const std::filesystem::path& path)
{
    warn(bench.prompts, bench.state.texts, Message::stepFileUnusable, {pathText(path)});
}

// Nothing, after a message, when not a single record could be read.
std::optional<SpeedStepFile> readStepFile(Workbench& bench, const std::filesystem::path& path)
{
    const auto content = readPresetFile(bench, path);
    if (!content)
        return std::nullopt;
    auto file = parseSpeedStepFile(*content);
    if (!file.records.empty() || file.fault)
        return file;
    warnOfUnusable(bench, path);
    return std::nullopt;
}

std::vector<int> stepsOf(const SpeedStepFile& file)
{
    std::set<int> steps;
    for (const SpeedStepRecord& record : file.records) {
        if (isSpeedStepCv(record.cv))
            steps.insert(cvOfSpeedStep(record.cv)); // the same rule both ways
    }
    return {steps.begin(), steps.end()};
}

std::optional<int> valueOfStep(const SpeedStepFile& file, int step)
{
    const auto found =
        std::find_if(file.records.begin(), file.records.end(),
                     [step](const SpeedStepRecord& record) { return record.cv == cvOfSpeedStep(step); });
    return found == file.records.end() ? std::nullopt : std::optional(found->value);
}

bool mergeSteps(Workbench& bench, PresetMerge& merge, const std::filesystem::path& path)
{
    const auto file = readStepFile(bench, path);
    if (!file)
        return false;
    for (const SpeedStepRecord& record : file->records)
        merge.take(record.cv, record.value);
    if (file->fault)
        tellFault(bench, path, *file->fault);
    tellStepsOutside(bench, bench.state.texts.message(Message::fileStepsOutsideLimits, {pathText(path)}),
                     stepsOf(*file));
    return !file->fault;
}

// A value that its CV does not allow is told, and the others are taken.
void mergeDistances(Workbench& bench, PresetMerge& merge, const std::filesystem::path& path)
{
    const auto content = readPresetFile(bench, path);
    if (!content)
        return;
    const auto file = parseDistanceFile(*content);
    if (const auto line = file.firstFault())
        warn(bench.prompts, bench.state.texts, Message::distanceFileFaults,
             {pathText(path), textFromNumber(*line)});
    for (std::size_t i = 0; i < distanceCvCount; ++i) {
        if (file.values[i].empty())
            continue;
        const DistanceCv& cv = distanceCvs()[i];
        if (const auto refusal = refusalOf(cv, file.values[i], bench.state.texts))
            bench.prompts.message(pathText(path) + Text(lineBreak) + *refusal, PromptIcon::warning);
        else
            merge.take(cv.cv, *numberFromText(file.values[i]));
    }
}

// The speed steps first; a fault in them ends the load.
std::optional<int> loadFiles(Workbench& bench, const std::filesystem::path& steps,
                             const std::filesystem::path& distances)
{
    PresetMerge merge(bench);
    const bool whole = mergeSteps(bench, merge, steps);
    if (whole)
        mergeDistances(bench, merge, distances);
    const int count = merge.finish();
    return whole || count > 0 ? std::optional(count) : std::nullopt;
}

FileRequest request(Files& files, const UserFolder& folder, const Text& title, const Text& extension)
{
    files.makeFolder(folder.own);
    return {title, folder.own, u"*." + extension, extension, {}};
}

FileRequest requestToOpen(Files& files, const UserFolder& folder, const Text& title, const Text& extension)
{
    auto asked = request(files, folder, title, extension);
    asked.shipped = folder.shipped;
    return asked;
}

bool saveFiles(Workbench& bench, const std::filesystem::path& steps, const std::filesystem::path& distances)
{
    const CvSet& set = bench.state.set;
    const UserFolders& folders = bench.state.userFolders;
    if (isAmongShipped(bench, folders.speedSteps, steps) ||
        isAmongShipped(bench, folders.distances, distances))
        return false;
    if (!saveContent(bench, distances, distancePresetContent(distanceValuesOf(set.table))) ||
        !saveContent(bench, steps, speedStepFileContent(set.table)))
        return false;
    bench.prompts.message(bench.state.texts.message(Message::stepTableSaved) + u" " + pathText(steps),
                          PromptIcon::information);
    return true;
}

struct PresetPaths {
    std::filesystem::path steps;
    std::filesystem::path distances;
};

// Before one's own files are replaced, and before the first that stand in front of the shipped ones.
bool maySave(Workbench& bench, const PresetPaths& own, const PresetPaths& shipped)
{
    const bool replaces = bench.files.exists(own.steps) || bench.files.exists(own.distances);
    if (!replaces && !bench.files.exists(shipped.steps) && !bench.files.exists(shipped.distances))
        return true;
    const auto question = replaces ? Message::replacePresetsQuestion : Message::saveOverShippedQuestion;
    return bench.prompts.question(
        bench.state.texts.message(question, {pathText(own.steps), pathText(own.distances),
                                             pathText(shipped.steps), pathText(shipped.distances)}));
}

Text withoutUnderscoreBehindCi(Text name)
{
    constexpr TextView start = u"ci_";
    if (name.starts_with(start))
        name.erase(start.size() - 1, 1);
    return name;
}

std::filesystem::path pathOf(std::string_view name)
{
    return {name};
}

} // namespace

std::span<const Preset> presets()
{
    return allPresets;
}

std::span<const BasedPreset> basedPresets()
{
    return allBasedPresets;
}

bool isAmongShipped(Workbench& bench, const UserFolder& folder, const std::filesystem::path& path)
{
    if (!folder.isShipped(path))
        return false;
    warn(bench.prompts, bench.state.texts, Message::shippedStaysAsItIs, {pathText(path)});
    return true;
}

const Preset* presetOfDistanceFile(const std::filesystem::path& name)
{
    const auto same = [](const std::filesystem::path& file) {
        return withoutUnderscoreBehindCi(lowerCase(pathText(file.filename())));
    };
    const auto* const found =
        std::find_if(std::begin(allPresets), std::end(allPresets),
                     [&](const Preset& preset) { return same(pathOf(preset.distanceFile)) == same(name); });
    return found == std::end(allPresets) ? nullptr : found;
}

std::optional<int> loadPreset(Workbench& bench, const Preset& preset)
{
    if (!isSetReady(bench, Message::presetNeedsSet, Message::presetNeedsSetAdvice))
        return std::nullopt;
    const UserFolders& folders = bench.state.userFolders;
    return loadFiles(bench, folders.speedSteps.find(bench.files, pathOf(preset.stepFile)),
                     folders.distances.find(bench.files, pathOf(preset.distanceFile)));
}

std::optional<LoadedFiles> loadOwnPreset(Workbench& bench, const Text& title)
{
    if (!isSetReady(bench, Message::presetNeedsSet, Message::presetNeedsSetAdvice))
        return std::nullopt;
    const UserFolders& folders = bench.state.userFolders;
    const auto steps = bench.prompts.openFile(requestToOpen(bench.files, folders.speedSteps, title, u"fcr"));
    const auto distances =
        steps ? bench.prompts.openFile(requestToOpen(bench.files, folders.distances, title, u"bcr"))
              : std::nullopt;
    const auto count = distances ? loadFiles(bench, *steps, *distances) : std::nullopt;
    return count ? std::optional(LoadedFiles{*steps, *distances, *count}) : std::nullopt;
}

bool savePreset(Workbench& bench, const Preset& preset)
{
    if (!isSetReady(bench, Message::saveNeedsSet, Message::saveNeedsSetAdvice))
        return false;
    const UserFolders& folders = bench.state.userFolders;
    bench.files.makeFolder(folders.speedSteps.own); // where that fails, saving says what is wrong
    bench.files.makeFolder(folders.distances.own);
    const auto paths = [&](const std::filesystem::path& steps, const std::filesystem::path& distances) {
        return PresetPaths{steps / pathOf(preset.stepFile), distances / pathOf(preset.distanceFile)};
    };
    const auto own = paths(folders.speedSteps.own, folders.distances.own);
    return maySave(bench, own, paths(folders.speedSteps.shipped, folders.distances.shipped)) &&
           saveFiles(bench, own.steps, own.distances);
}

bool saveOwnPreset(Workbench& bench, const Text& title)
{
    if (!isSetReady(bench, Message::saveNeedsSet, Message::saveNeedsSetAdvice))
        return false;
    const UserFolders& folders = bench.state.userFolders;
    const auto steps = bench.prompts.saveFile(request(bench.files, folders.speedSteps, title, u"fcr"));
    const auto distances =
        steps ? bench.prompts.saveFile(request(bench.files, folders.distances, title, u"bcr")) : std::nullopt;
    return distances && saveFiles(bench, *steps, *distances);
}

std::optional<WritePlan> planOfBaseAndTop(Workbench& bench, const Preset& preset)
{
    if (!isSetReady(bench, Message::presetNeedsSet, Message::presetNeedsSetAdvice, Editor::baseAndTop))
        return std::nullopt;
    const auto path = bench.state.userFolders.speedSteps.find(bench.files, pathOf(preset.stepFile));
    const auto content = readPresetFile(bench, path);
    if (!content)
        return std::nullopt;
    const auto file = parseSpeedStepFile(*content);
    const auto first = valueOfStep(file, 1);
    const auto last = valueOfStep(file, speedStepCount);
    if (first && last && !file.fault)
        return WritePlan{{baseSpeedCv, *first}, {topSpeedCv, *last}};
    warnOfUnusable(bench, path);
    return std::nullopt;
}

std::optional<BasedSpeedTable> readBasedPreset(Workbench& bench, const BasedPreset& preset)
{
    const auto path = bench.state.userFolders.speedSteps.find(bench.files, pathOf(preset.file));
    const auto content = readPresetFile(bench, path);
    if (!content)
        return std::nullopt;
    const auto parsed = parseBasedSpeedTable(*content);
    if (const auto* const table = std::get_if<BasedSpeedTable>(&parsed))
        return *table;
    warn(bench.prompts, bench.state.texts, Message::preFileWrong,
         {pathText(path), textFromNumber(std::get<int>(parsed))});
    return std::nullopt;
}

} // namespace karvo
