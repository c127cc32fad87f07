#include "workbench/export_files.h"

#include "cvdata/csv_export.h"
#include "cvdata/text_report.h"
#include "language/file_trouble.h"
#include "program/path_text.h"
#include "program/text_lines.h"

namespace karvo
{

bool saveContent(Workbench& bench, const std::filesystem::path& path, const Bytes& content)
{
    const auto error = bench.files.saveAtomically(path, content);
    if (!error)
        return true;
    bench.prompts.message(
        bench.state.texts.message(Message::cannotSaveFile,
                                  {pathText(path), fileTroubleText(error, bench.state.texts, bench.files)}),
        PromptIcon::warning);
    return false;
}

Bytes exportedContent(const ProgramState& state, ExportForm form)
{
    switch (form) {
    case ExportForm::csv:
        return csvExport(state.set.table, CsvForm::plain);
    case ExportForm::csvClosedHeader:
        return csvExport(state.set.table, CsvForm::closedHeader);
    case ExportForm::text:
        break;
    }
    return contentOfLines(textReport(state.set, state.texts));
}

std::optional<std::filesystem::path> exportSet(Workbench& bench, ExportForm form, const Text& title,
                                               const DateTime& now)
{
    const Text extension = form == ExportForm::text ? u"txt" : u"csv";
    Text name = reportFileName(bench.state.set, now);
    name.replace(name.size() - extension.size(), extension.size(), extension);
    auto path = bench.prompts.saveFile(
        {title, bench.state.userFolders.cvLists.own, u"*." + extension, extension, name});
    if (!path || !saveContent(bench, *path, exportedContent(bench.state, form)))
        return std::nullopt;
    return path;
}

} // namespace karvo
