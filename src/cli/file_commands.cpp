#include "cli/file_commands.h"

#include "cli/file_output.h"
#include "cli/file_patterns.h"
#include "platform/text_conversion.h"
#include "program/path_text.h"
#include "workbench/compared_sets.h"
#include "workbench/export_files.h"
#include "workbench/list_files.h"
#include "workbench/list_notes.h"

#include <QFileInfo>

#include <algorithm>

namespace karvo
{

namespace
{

bool mayReplace(CommandRun& run, const std::filesystem::path& path)
{
    if (run.arguments.yes || !run.bench.files.exists(path))
        return true;
    const Text name = pathText(path);
    if (run.bench.prompts.question(run.texts().message(Message::replaceFileQuestion, {name})))
        return true;
    run.output.say(run.texts().message(Message::leftAsItIs, {name}));
    return false;
}

void showNotes(Workbench& bench, const ListFile& list, const std::filesystem::path& path)
{
    const Text notes = listNotes(list, path, bench.state.texts);
    if (!notes.empty())
        bench.prompts.message(notes, PromptIcon::warning);
}

bool saveAs(Workbench& bench, const std::filesystem::path& path, const QString& extension)
{
    if (extension == QLatin1String("csv"))
        return saveContent(bench, path, exportedContent(bench.state, ExportForm::csv));
    if (extension == QLatin1String("txt"))
        return saveContent(bench, path, exportedContent(bench.state, ExportForm::text));
    return saveListAs(bench, path);
}

} // namespace

ExitCode saveToFile(CommandRun& run, const QString& file)
{
    const auto path = toPath(file);
    if (!mayReplace(run, path) || !saveAs(run.bench, path, QFileInfo(file).suffix().toLower()))
        return ExitCode::fileTrouble;
    run.output.put(QStringLiteral("saved"), file);
    return ExitCode::done;
}

ExitCode runExport(CommandRun& run)
{
    if (!openList(run.bench, toPath(run.arguments.operands.value(0))))
        return ExitCode::fileTrouble;
    return saveToFile(run, run.arguments.operands.value(1));
}

ExitCode runCompare(CommandRun& run)
{
    Workbench& bench = run.bench;
    const auto firstPath = toPath(run.arguments.operands.value(0));
    const auto secondPath = toPath(run.arguments.operands.value(1));
    const auto first = readListFile(bench, firstPath);
    const auto second = first ? readListFile(bench, secondPath) : std::nullopt;
    if (!second)
        return ExitCode::cannotCompare;
    showNotes(bench, *first, firstPath);
    showNotes(bench, *second, secondPath);
    const CvSide one = sideOf(*first, pathText(firstPath));
    const CvSide other = sideOf(*second, pathText(secondPath));
    if (const auto refusal = comparisonRefusal(one, other, run.texts())) {
        bench.prompts.message(*refusal, PromptIcon::warning);
        return ExitCode::cannotCompare;
    }
    const auto comparison = compare(one, other, wordsOf(bench, *first), speedStepsOf(*first));
    printComparison(run.output, comparison, run.texts());
    return comparison.isEqual() ? ExitCode::done : ExitCode::listsDiffer;
}

ExitCode runSet(CommandRun& run)
{
    std::vector<std::filesystem::path> paths;
    for (const QString& file : run.arguments.operands) {
        const auto path = toPath(file);
        const auto meant = shellLeavesPatterns ? filesMeant(run.bench.files, path) : std::vector{path};
        paths.insert(paths.end(), meant.begin(), meant.end());
    }
    auto batch = previewBatch(run.bench.files, paths, run.arguments.changes);
    if (!run.arguments.dryRun)
        applyBatch(run.bench.files, run.texts(), batch);
    printBatch(run.output, batch, run.texts());
    const bool anyRefused =
        std::any_of(batch.begin(), batch.end(), [](const BatchFile& file) { return file.isRefused(); });
    return anyRefused ? ExitCode::fileTrouble : ExitCode::done;
}

} // namespace karvo
