#include "language/language_code.h"
#include "platform/caller.h"
#include "platform/text_conversion.h"
#include "shell/karvo_program.h"
#include "shell/options.h"

#include <QApplication>
#include <QStandardPaths>

#include <cstdlib>

namespace
{

constexpr int misuse = 2;

// Without those of the window system, which takes them away.
std::vector<std::string> remainingArguments()
{
    std::vector<std::string> arguments;
    for (const QString& argument : QCoreApplication::arguments().mid(1))
        arguments.push_back(argument.toStdString());
    return arguments;
}

int refuse(const std::string& error)
{
    karvo::tellCaller(karvo::CallerNews::fault, "karvo: " + error + "\nTry 'karvo --help'.\n");
    return misuse;
}

// What is wrong in it, in words; empty when it can be used.
std::string setUp(karvo::ProgramSetup& setup, const karvo::Options& options)
{
    setup.recoveryFolder =
        karvo::toPath(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    setup.programFolder = karvo::toPath(options.programFolder ? QString::fromStdString(*options.programFolder)
                                                              : QCoreApplication::applicationDirPath());
    setup.settingsFile = QString::fromStdString(options.settingsFile.value_or(""));
    for (const std::string& argument : options.mapPorts) {
        const auto parsed = karvo::parsePortMapping(QString::fromStdString(argument));
        if (parsed.error != karvo::PortMappingError::none)
            return "--map-port needs a port from COM1 to COM31 and a device, such as COM5=/dev/ttyUSB0";
        setup.mappings.push_back(parsed.mapping);
    }
    if (options.language) {
        setup.language = karvo::languageFromName(*options.language);
        if (!setup.language)
            return "there is no language " + *options.language + "; there are: de, nl, en, es, fr";
    }
    if (!options.simulate)
        return {};
    setup.simulated = karvo::sim::decoderByName(*options.simulate);
    return setup.simulated ? std::string() : "there is no simulated decoder " + *options.simulate;
}

} // namespace

int main(int count, char** values)
{
    // What needs no window is done without one.
    const auto early = karvo::parseOptions(karvo::argumentsOf(count, values));
    if (!early.error.empty())
        return refuse(early.error);
    if (early.help) {
        karvo::tellCaller(karvo::CallerNews::answer, karvo::helpText());
        return EXIT_SUCCESS;
    }
    if (early.version) {
        karvo::tellCaller(karvo::CallerNews::answer, "karvo " KARVO_VERSION "\n");
        return EXIT_SUCCESS;
    }

    QCoreApplication::setOrganizationName(QStringLiteral("Karvo"));
    QCoreApplication::setApplicationName(QStringLiteral("Karvo"));
    const QApplication application(count, values);
    const auto options = karvo::parseOptions(remainingArguments());
    if (!options.others.empty())
        return refuse("unknown argument " + options.others.front());
    karvo::ProgramSetup setup;
    if (const auto error = setUp(setup, options); !error.empty())
        return refuse(error);

    karvo::KarvoProgram program(setup);
    if (!program.start())
        return EXIT_FAILURE;
    if (options.read)
        program.window().readSoon();
    return QApplication::exec();
}
