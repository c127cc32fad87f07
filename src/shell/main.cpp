#include "language/language_code.h"
#include "platform/text_conversion.h"
#include "shell/karvo_program.h"
#include "shell/options.h"

#include <QApplication>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#ifdef _WIN32
#include <windows.h>
#endif

namespace
{

constexpr int misuse = 2;

std::vector<std::string> argumentsOf(int count, char** values)
{
    return {values + 1, values + count};
}

// A window program has no console of its own on Windows: what it prints goes to the one it was called from.
void useConsoleOfTheCaller()
{
#ifdef _WIN32
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return;
    std::freopen("CONOUT$", "w", stdout);
    std::freopen("CONOUT$", "w", stderr);
#endif
}

int refuse(const std::string& error)
{
    std::cerr << "karvo: " << error << "\nTry 'karvo --help'.\n";
    return misuse;
}

// What is wrong in it, in words; empty when it can be used.
std::string setUp(karvo::ProgramSetup& setup, const karvo::Options& options)
{
    setup.recoveryFolder =
        karvo::toPath(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    setup.programFolder = karvo::toPath(options.programFolder ? QString::fromLocal8Bit(*options.programFolder)
                                                              : QCoreApplication::applicationDirPath());
    for (const std::string& argument : options.mapPorts) {
        const auto parsed = karvo::parsePortMapping(QString::fromLocal8Bit(argument));
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
    useConsoleOfTheCaller();
    // What needs no window is done without one.
    const auto early = karvo::parseOptions(argumentsOf(count, values));
    if (!early.error.empty())
        return refuse(early.error);
    if (early.help) {
        std::cout << karvo::helpText();
        return EXIT_SUCCESS;
    }
    if (early.version) {
        std::cout << "karvo " KARVO_VERSION "\n";
        return EXIT_SUCCESS;
    }

    QCoreApplication::setOrganizationName(QStringLiteral("Karvo"));
    QCoreApplication::setApplicationName(QStringLiteral("Karvo"));
    QApplication application(count, values); // takes the window system's options away
    const auto options = karvo::parseOptions(argumentsOf(count, values));
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
