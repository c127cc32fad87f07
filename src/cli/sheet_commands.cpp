#include "cli/sheet_commands.h"

#include "cli/sheet_output.h"
#include "platform/text_conversion.h"
#include "workbench/list_files.h"

#include <QJsonArray>

namespace karvo
{

namespace
{

SheetStore sheetsOf(CommandRun& run)
{
    const ProgramState& state = run.bench.state;
    auto store = loadSheets(run.bench.files, state.programFolder, state.userFolders.sheets);
    for (const RefusedSheet& refused : store.refused)
        run.output.say(refusalText(refused, run.texts()));
    return store;
}

// Which sheets open for the list.
void printNames(CommandRun& run, const SheetStore& store)
{
    const ProgramState& state = run.bench.state;
    QJsonArray names;
    for (const StoredSheet& one : store.sheets) {
        if (whyNotOpen(one.sheet, state.set, state.texts))
            continue;
        const QString name = QString::fromStdString(one.sheet.item);
        names.append(name);
        run.output.line(joined({toText(name), u"  ", one.sheet.words.in(state.language)}));
    }
    run.output.put(QStringLiteral("sheets"), names);
}

} // namespace

ExitCode runSheet(CommandRun& run)
{
    if (!openList(run.bench, toPath(run.arguments.from)))
        return ExitCode::fileTrouble;
    const ProgramState& state = run.bench.state;
    const SheetStore store = sheetsOf(run);
    const QString name = run.arguments.operands.value(0);
    if (name.isEmpty()) {
        printNames(run, store);
        return ExitCode::done;
    }
    const FunctionSheet* const sheet = store.sheetOf(name.toStdString());
    if (sheet == nullptr) {
        run.output.say(run.texts().message(Message::noSuchSheet, {toText(name)}));
        return ExitCode::wrongArguments;
    }
    if (const auto why = whyNotOpen(*sheet, state.set, run.texts())) {
        run.output.say(*why);
        return ExitCode::wrongArguments;
    }
    const SheetView view = viewOf(*sheet, state.set, run.texts(), state.language);
    SheetValues values(view, state.set);
    if (const auto* const readyMade = view.readyMadeOf(name.toStdString()))
        values.fill(*readyMade, view.readyMade);
    printSheet(run.output, view, values, state);
    return ExitCode::done;
}

ExitCode runDescribe(CommandRun& run)
{
    if (!openList(run.bench, toPath(run.arguments.operands.value(0))))
        return ExitCode::fileTrouble;
    const ProgramState& state = run.bench.state;
    const SheetStore store = sheetsOf(run);
    printSettings(run.output, describeSettings(state.set, store, run.texts(), state.language));
    return ExitCode::done;
}

} // namespace karvo
