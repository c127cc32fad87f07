// The command line front end: the same logic as the window's, on a terminal.
#include "cli/cli_arguments.h"
#include "cli/cli_commands.h"
#include "cli/command_table.h"
#include "cli/file_commands.h"
#include "cli/firmware_commands.h"
#include "cli/line_options.h"
#include "cli/sheet_commands.h"
#include "cli/terminal.h"
#include "cli/write_command.h"
#include "language/file_trouble.h"
#include "language/first_start.h"
#include "language/language_loader.h"
#include "link/port_choice.h"
#include "platform/caller.h"
#include "platform/console.h"
#include "platform/qt_files.h"
#include "platform/qt_settings.h"
#include "platform/qt_wait.h"
#include "platform/system_serial_port.h"
#include "platform/system_stay_awake.h"
#include "platform/text_conversion.h"

#include <QCoreApplication>
#include <QLocale>

#include <chrono>

using namespace karvo;

namespace
{

// Where the line takes no time, what has not come by then does not come.
constexpr std::chrono::milliseconds unpacedTimeOut{200};

LanguageCode languageOfSystem()
{
    const auto name = QLocale::system().name().left(2).toStdString();
    return languageFromName(name).value_or(LanguageCode::english);
}

LanguageCode storedLanguage(const Settings& settings)
{
    const auto stored = languageFromSetting(settings.get("Parameter", "Language").value_or(Text()));
    return stored ? *stored : languageOfSystem();
}

ExitCode carryOut(CommandRun& run)
{
    switch (run.arguments.command) {
    case CliCommand::ports:
        return runPorts(run);
    case CliCommand::identify:
        return runIdentify(run);
    case CliCommand::read:
        return runRead(run);
    case CliCommand::list:
        return runList(run);
    case CliCommand::exportList:
        return runExport(run);
    case CliCommand::compare:
        return runCompare(run);
    case CliCommand::set:
        return runSet(run);
    case CliCommand::write:
        return runWrite(run);
    case CliCommand::sheet:
        return runSheet(run);
    case CliCommand::describe:
        return runDescribe(run);
    case CliCommand::flash:
        return runFlash(run);
    case CliCommand::update:
        return runUpdate(run);
    case CliCommand::unzip:
        return runUnzip(run);
    }
    return ExitCode::wrongArguments;
}

// With the line that was asked for; Ctrl-C ends what is under way.
ExitCode runOn(SerialPort& port, const PortMap& map, const CliArguments& arguments, ProgramState& state,
               QtSettings& settings, Output& output)
{
    QtWait wait;
    port.setNotice([&wait] { wait.wake(); });
    auto answeredYes = arguments.forced;
    if (arguments.yes)
        answeredYes.insert(QuestionKind::usual);
    InterruptNotice interrupt;
    if (isInterruptible(commandOf(arguments.command)))
        interrupt.listen([&wait] { wait.endProgram(); });
    TerminalPrompts prompts(
        output, state.texts, interrupt, [&wait] { wait.endProgram(); }, answeredYes);
    TerminalView view(output);
    QtFiles files;
    SystemStayAwake stayAwake;
    Workbench bench{state, port, wait, prompts, view, files, settings, &stayAwake};
    CommandRun run{bench, map, arguments, output, interrupt};
    const ExitCode code = carryOut(run);
    if (interrupt.times() == 0 || code == ExitCode::done)
        return code;
    output.say(state.texts.message(Message::interruptedByUser));
    return ExitCode::interrupted;
}

ExitCode refuse(Output& output, const Text& why)
{
    output.say(why);
    return ExitCode::wrongArguments;
}

ExitCode runWith(const CliArguments& arguments, ProgramState& state, QtSettings& settings, Output& output)
{
    if (!arguments.language.isEmpty() && !languageFromName(arguments.language.toStdString()))
        return refuse(output, state.texts.message(Message::unknownLanguage, {toText(arguments.language)}));
    const auto mappings = portMappings(arguments, state.texts);
    if (const auto* const wrong = std::get_if<Text>(&mappings))
        return refuse(output, *wrong);
    const PortMap map(settings, std::get<std::vector<PortMapping>>(mappings));
    state.expert = arguments.expert;
    state.link.portNumber =
        arguments.port.value_or(portNumberFromSetting(settings.get("Parameter", "Com_Port")));
    if (arguments.simulatedDecoder.isEmpty()) {
        SystemSerialPort port(map);
        return runOn(port, map, arguments, state, settings, output);
    }
    const auto simulated = simulatedLine(arguments, state.link.portNumber, state.texts);
    if (const auto* const wrong = std::get_if<Text>(&simulated))
        return refuse(output, *wrong);
    if (arguments.unpaced)
        state.link.timeOutInterval = unpacedTimeOut;
    return runOn(*std::get<std::unique_ptr<SerialPort>>(simulated), map, arguments, state, settings, output);
}

// In the language that the words ask for, else the stored one. What is wrong when a file is missing.
std::optional<Text> loadTexts(const CommandWords& words, ProgramState& state, const Settings& settings,
                              Output& output)
{
    const auto wanted = languageFromName(words.value("language"));
    state.language = wanted.value_or(storedLanguage(settings));
    QtFiles files;
    const auto loaded = loadLanguage(state.texts, state.language, state.programFolder, files);
    if (loaded.missing)
        return missingLanguageFileText(*loaded.missing);
    if (!loaded.damaged.empty())
        output.say(damagedLanguageFileText(state.texts, loaded, state.language));
    return std::nullopt;
}

ExitCode start(const CommandWords& words, ProgramState& state, const Command*& command, Output& output)
{
    QtSettings settings(QString::fromStdString(words.value("settings")));
    const QString folder = QString::fromStdString(words.value("program-folder"));
    state.programFolder = toPath(folder.isEmpty() ? QCoreApplication::applicationDirPath() : folder);
    const auto missing = loadTexts(words, state, settings, output);
    const auto parsed = parseCliArguments(words, state.texts);
    if (parsed.arguments)
        command = &commandOf(parsed.arguments->command);
    if (missing && !words.has("version")) {
        output.say(*missing);
        return command != nullptr && command->command == CliCommand::compare ? ExitCode::cannotCompare
                                                                             : ExitCode::fileTrouble;
    }
    if (parsed.wrong)
        return refuse(output, parsed.text);
    if (parsed.arguments)
        return runWith(*parsed.arguments, state, settings, output);
    output.line(parsed.text);
    return ExitCode::done;
}

// A result that nobody can read is none.
ExitCode finish(ExitCode code, const ProgramState& state, const Command* command, Output& output)
{
    const auto* const form = command == nullptr ? nullptr : exitOf(*command, code);
    output.finish(code, form == nullptr ? Text() : state.texts.caption(form->help));
    const auto failure = output.failure();
    if (!failure)
        return code;
    const Text why = fileTroubleText(failure, state.texts, QtFiles());
    output.remark(state.texts.message(Message::outputNotWritten, {why}));
    if (!isSuccess(code))
        return code;
    return command != nullptr && command->command == CliCommand::compare ? ExitCode::cannotCompare
                                                                         : ExitCode::fileTrouble;
}

} // namespace

int main(int argc, char** argv)
{
    holdStandardStreams();
    const QCoreApplication application(argc, argv);
    const auto arguments = argumentsOf(argc, argv);
    const CommandWords words = cliWords(arguments);
    Output output(words.has("json") ? Output::Form::json : Output::Form::lines);
    ProgramState state;
    const Command* command = nullptr;
    const ExitCode code = start(words, state, command, output);
    return exitNumber(finish(code, state, command, output));
}
