#include "cli/file_commands.h"

#include "cli/file_output.h"
#include "cli/terminal.h"
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

bool mayReplace(Workbench& bench, const std::filesystem::path& path, const CliArguments& arguments)
{
    if (arguments.yes || !bench.files.exists(path))
        return true;
    const Text name[] = {pathText(path)};
    if (bench.prompts.question(filledIn(bench.state.texts.message(Message::replaceFileQuestion), name)))
        return true;
    printLine(stderr, toText(QStringLiteral("%1 was left as it is.").arg(pathToQString(path))));
    return false;
}

void showNotes(Workbench& bench, const ListFile& list, const std::filesystem::path& path)
{
    const Text notes = listNotes(list, path, bench.state.texts);
    if (!notes.empty())
        bench.prompts.message(notes, PromptIcon::warning);
}

} // namespace

ExitCode saveToFile(Workbench& bench, const QString& file, const CliArguments& arguments)
{
    const auto path = toPath(file);
    if (!mayReplace(bench, path, arguments))
        return ExitCode::fileTrouble;
    const QString extension = QFileInfo(file).suffix().toLower();
    bool saved = false;
    if (extension == QLatin1String("csv"))
        saved = saveContent(bench, path, exportedContent(bench.state, ExportForm::csv));
    else if (extension == QLatin1String("txt"))
        saved = saveContent(bench, path, exportedContent(bench.state, ExportForm::text));
    else
        saved = saveListAs(bench, path);
    return saved ? ExitCode::done : ExitCode::fileTrouble;
}

ExitCode runExport(Workbench& bench, const CliArguments& arguments)
{
    if (!openList(bench, toPath(arguments.operands.value(0))))
        return ExitCode::fileTrouble;
    return saveToFile(bench, arguments.operands.value(1), arguments);
}

ExitCode runCompare(Workbench& bench, const CliArguments& arguments)
{
    const auto firstPath = toPath(arguments.operands.value(0));
    const auto secondPath = toPath(arguments.operands.value(1));
    const auto first = readListFile(bench, firstPath);
    const auto second = first ? readListFile(bench, secondPath) : std::nullopt;
    if (!second)
        return ExitCode::cannotCompare;
    showNotes(bench, *first, firstPath);
    showNotes(bench, *second, secondPath);
    const CvSide one = sideOf(*first, pathText(firstPath));
    const CvSide other = sideOf(*second, pathText(secondPath));
    if (const auto refusal = comparisonRefusal(one, other, bench.state.texts)) {
        bench.prompts.message(*refusal, PromptIcon::warning);
        return ExitCode::cannotCompare;
    }
    const auto comparison = compare(one, other, wordsOf(bench, *first), speedStepsOf(*first));
    printComparison(comparison, bench.state.texts, arguments.json);
    return comparison.isEqual() ? ExitCode::done : ExitCode::listsDiffer;
}

ExitCode runSet(Workbench& bench, const CliArguments& arguments)
{
    std::vector<std::filesystem::path> paths;
    for (const QString& file : arguments.operands)
        paths.push_back(toPath(file));
    auto batch = previewBatch(bench.files, paths, arguments.changes);
    if (!arguments.dryRun)
        applyBatch(bench.files, batch);
    printBatch(batch, bench.state.texts, arguments.json);
    const bool anyRefused =
        std::any_of(batch.begin(), batch.end(), [](const BatchFile& file) { return file.isRefused(); });
    return anyRefused ? ExitCode::fileTrouble : ExitCode::done;
}

} // namespace karvo
