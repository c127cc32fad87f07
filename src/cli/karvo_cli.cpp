// The command line front end: the same logic as the window's, on a terminal.
#include "cli/cli_arguments.h"
#include "cli/cli_commands.h"
#include "cli/file_commands.h"
#include "cli/firmware_commands.h"
#include "cli/terminal.h"
#include "cli/write_command.h"
#include "language/first_start.h"
#include "language/language_loader.h"
#include "link/port_choice.h"
#include "platform/line_options.h"
#include "platform/qt_files.h"
#include "platform/qt_serial_port.h"
#include "platform/qt_settings.h"
#include "platform/qt_wait.h"
#include "platform/system_stay_awake.h"
#include "platform/text_conversion.h"

#include <QCoreApplication>
#include <QLocale>

#include <memory>

using namespace karvo;

namespace
{

int leave(ExitCode code)
{
    return static_cast<int>(code);
}

int complain(const QString& text)
{
    printLine(stderr, toText(text));
    return leave(ExitCode::wrongArguments);
}

LanguageCode languageOfSystem()
{
    const auto name = QLocale::system().name().left(2).toStdString();
    return languageFromName(name).value_or(LanguageCode::english);
}

// As asked for, else as stored, else as the system speaks; nothing for a word that is no language.
std::optional<LanguageCode> languageFor(const CliArguments& arguments, const Settings& settings)
{
    if (!arguments.language.isEmpty())
        return languageFromName(arguments.language.toStdString());
    const auto stored = languageFromSetting(settings.get("Parameter", "Language").value_or(Text()));
    return stored ? stored : languageOfSystem();
}

ExitCode run(Workbench& bench, const PortMap& map, const CliArguments& arguments)
{
    switch (arguments.command) {
    case CliCommand::ports:
        return runPorts(bench, map, arguments);
    case CliCommand::identify:
        return runIdentify(bench, arguments);
    case CliCommand::read:
        return runRead(bench, arguments);
    case CliCommand::list:
        return runList(bench, arguments);
    case CliCommand::exportList:
        return runExport(bench, arguments);
    case CliCommand::compare:
        return runCompare(bench, arguments);
    case CliCommand::set:
        return runSet(bench, arguments);
    case CliCommand::write:
        return runWrite(bench, arguments);
    case CliCommand::flash:
        return runFlash(bench, arguments);
    case CliCommand::update:
        return runUpdate(bench, arguments);
    case CliCommand::unzip:
        return runUnzip(bench, arguments);
    }
    return ExitCode::wrongArguments;
}

int runWith(const CliArguments& arguments)
{
    QtSettings settings;
    const auto language = languageFor(arguments, settings);
    if (!language)
        return complain(QStringLiteral("There is no language %1.").arg(arguments.language));
    const auto mappings = parsePortMappings(arguments.portMappings);
    if (!mappings.wrong.isEmpty())
        return complain(QStringLiteral("%1 is no port mapping like COM5=/dev/ttyUSB0.").arg(mappings.wrong));

    const PortMap map(settings, mappings.mappings);
    ProgramState state;
    state.programFolder = arguments.programFolder.isEmpty() ? toPath(QCoreApplication::applicationDirPath())
                                                            : toPath(arguments.programFolder);
    state.expert = arguments.expert;
    state.link.portNumber =
        arguments.port.value_or(portNumberFromSetting(settings.get("Parameter", "Com_Port")));

    std::unique_ptr<SerialPort> port = std::make_unique<QtSerialPort>(map);
    if (!arguments.simulatedDecoder.isEmpty()) {
        auto demo = simulatedLine({arguments.simulatedDecoder, arguments.fault, arguments.unpaced},
                                  state.link.portNumber);
        if (!demo.port)
            return complain(demo.wrong);
        port = std::move(demo.port);
    }
    QtWait wait;
    port->setNotice([&wait] { wait.wake(); });
    auto answeredYes = arguments.forced;
    if (arguments.yes)
        answeredYes.insert(QuestionKind::usual);
    TerminalPrompts prompts([&wait] { wait.endProgram(); }, answeredYes);
    TerminalView view;
    QtFiles files;
    SystemStayAwake stayAwake;
    Workbench bench{state, *port, wait, prompts, view, files, settings, &stayAwake};
    state.language = *language;
    const auto loaded = loadLanguage(state.texts, *language, state.programFolder, files);
    if (loaded.missing) {
        prompts.message(missingLanguageFileText(*loaded.missing), PromptIcon::stop);
        return leave(arguments.command == CliCommand::compare ? ExitCode::cannotCompare
                                                              : ExitCode::fileTrouble);
    }
    if (!loaded.damaged.empty())
        prompts.message(damagedLanguageFileText(state.texts, loaded, *language), PromptIcon::warning);
    return leave(run(bench, map, arguments));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto parsed = parseCliArguments(QCoreApplication::arguments());
    if (parsed.arguments)
        return runWith(*parsed.arguments);
    if (parsed.wrong)
        return complain(parsed.text);
    std::fputs(parsed.text.toUtf8().constData(), stdout);
    return leave(ExitCode::done);
}
