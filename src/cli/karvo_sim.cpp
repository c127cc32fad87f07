// karvo-sim: the simulated programming interface on a pseudo terminal, for any program that can open a serial
// device.
#include "cli/line_log.h"
#include "cli/pseudo_terminal.h"
#include "program/command_words.h"
#include "simulator/simulator.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <optional>
#include <string_view>
#include <system_error>

#include <poll.h>

namespace karvo
{

namespace
{

constexpr int exitDone = 0;
constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

// How long a pulled adapter stays out, so that whoever used it can let go of it first.
constexpr sim::Time unpluggedFor = std::chrono::seconds(1);

// The only thing a signal handler may touch.
volatile std::sig_atomic_t stopRequested = 0;

struct Options {
    std::optional<sim::Decoder> decoder;
    sim::Pace pace = sim::Pace::line;
    sim::Fault fault = sim::Fault::none;
    std::optional<std::filesystem::path> log;
    bool list = false;
    bool help = false;
    bool version = false;
};

// Thrown for a command line that can not be understood.
struct UsageError {
    std::string message;
};

sim::Pace paceFrom(std::string_view name)
{
    if (name == "line")
        return sim::Pace::line;
    if (name == "none")
        return sim::Pace::none;
    throw UsageError{"unknown pace \"" + std::string(name) + "\": line or none"};
}

sim::Fault faultFrom(std::string_view name)
{
    if (const auto fault = sim::faultByName(name))
        return *fault;
    throw UsageError{"unknown fault \"" + std::string(name) + "\", --help names them"};
}

sim::Decoder decoderFrom(std::string_view name)
{
    if (auto decoder = sim::decoderByName(name))
        return std::move(*decoder);
    throw UsageError{"unknown model \"" + std::string(name) + "\", --list names them"};
}

std::vector<HelpedOption> commandOptions()
{
    std::string faults = "one of:";
    for (const auto name : sim::faultNames())
        faults += " " + std::string(name);
    return {
        {{"pace", "line"}, "at the rate that the program sets, as the real line (the usual)"},
        {{"pace", "none"}, "answers come at once"},
        {{"fault", "NAME"},
         faults + "\nAfter hang-up the device comes back a second later; its path is printed again."},
        {{"log", "FILE"}, "a line for each command (>) and each reply (<): seconds, a word, the bytes"},
        {{"list", ""}, "the names of all models"},
        {{"help", ""}, ""},
        {{"version", ""}, ""},
    };
}

Options parse(const std::vector<std::string>& arguments)
{
    const auto forms = formsOf(commandOptions());
    const CommandWords words(arguments, forms, SingleDash::startsOption);
    if (words.fault())
        throw UsageError{faultText(*words.fault())};
    if (words.plain().size() > 1)
        throw UsageError{"one model only, \"" + words.plain()[1] + "\" is a second one"};
    Options options;
    if (words.has("fault"))
        options.fault = faultFrom(words.value("fault"));
    if (words.has("pace"))
        options.pace = paceFrom(words.value("pace"));
    if (words.has("log"))
        options.log = words.value("log");
    options.list = words.has("list");
    options.help = words.has("help");
    options.version = words.has("version");
    if (!words.plain().empty())
        options.decoder = decoderFrom(words.plain().front());
    return options;
}

void printHelp()
{
    constexpr std::size_t helpColumn = 16;
    std::cout
        << "karvo-sim MODEL [--fault NAME] [--pace line|none] [--log FILE]\n"
           "karvo-sim --list | --help | --version\n\n"
           "Simulates a programming interface with a decoder on it. The first line printed is the path "
           "of the\n"
           "serial device to open; it may be closed and opened again. Ends with Ctrl+C.\n\n"
        << optionRows(commandOptions(), helpColumn)
        << "\nAt 115200 baud the decoder's boot loader answers, at any other rate the interface. Until a "
           "program sets a\n"
           "rate it is 4800.\n\n"
           "Exit codes: 0 ended by a signal, 1 the system gave no pseudo terminal or the log can not be "
           "written,\n"
           "2 wrong arguments.\n";
}

void printModels()
{
    for (const auto& name : sim::decoderNames())
        std::cout << name << '\n';
}

sim::Time now()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<sim::Time>(sinceStart);
}

// The signals that end the program stay blocked except inside sleep(): none can come between the test and the
// sleep.
sigset_t holdSignalsBack()
{
    struct sigaction action {
    };
    action.sa_handler = [](int) { stopRequested = 1; };
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    sigaddset(&held, SIGINT);
    sigaddset(&held, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &held, &before);
    return before;
}

// Until bytes can be read from the descriptor (true), the time is up, or a signal ends the program.
bool sleep(int descriptor, std::optional<sim::Time> duration, const sigset_t& signals)
{
    pollfd awaited{descriptor, POLLIN, 0};
    timespec limit{};
    if (duration) {
        const auto microseconds = std::max(duration->count(), sim::Time::rep{0});
        limit.tv_sec = microseconds / 1'000'000;
        limit.tv_nsec = microseconds % 1'000'000 * 1000;
    }
    const int ready = ::ppoll(&awaited, 1, duration ? &limit : nullptr, &signals);
    if (ready < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "poll");
    return ready > 0;
}

// Another rate means that the device was opened anew.
void followRate(sim::Simulator& simulator, const PseudoTerminal& terminal, LineLog* log)
{
    const int baud = terminal.baud().value_or(simulator.baud());
    if (baud == simulator.baud())
        return;
    simulator.reconnect();
    simulator.setBaud(baud);
    if (log != nullptr)
        log->rate(baud);
}

// Until the line hangs up or a signal ends the program.
void serveDevice(sim::Simulator& simulator, PseudoTerminal& terminal, LineLog* log, const sigset_t& signals)
{
    while (!stopRequested) {
        const sim::Time moment = now();
        terminal.write(simulator.take(moment));
        if (simulator.hungUp(moment))
            return;
        std::optional<sim::Time> pause = simulator.nextEvent();
        if (pause)
            *pause -= moment;
        if (!sleep(terminal.descriptor(), pause, signals))
            continue;
        followRate(simulator, terminal, log);
        simulator.receive(terminal.read(), now());
    }
}

void serve(sim::Simulator& simulator, LineLog* log)
{
    constexpr int noDescriptor = -1;
    const sigset_t signals = holdSignalsBack();
    while (!stopRequested) {
        {
            PseudoTerminal terminal;
            std::cout << terminal.path() << std::endl;
            if (log != nullptr)
                log->opened(terminal.path());
            serveDevice(simulator, terminal, log, signals);
        }
        if (!stopRequested)
            sleep(noDescriptor, unpluggedFor, signals);
        simulator.reconnect();
    }
}

int run(const Options& options)
{
    if (options.help)
        printHelp();
    else if (options.version)
        std::cout << "karvo-sim " KARVO_VERSION "\n";
    else if (options.list)
        printModels();
    else if (options.decoder) {
        sim::Simulator simulator(*options.decoder, options.pace, options.fault);
        std::optional<LineLog> log;
        if (options.log) {
            log.emplace(*options.log);
            simulator.setWatcher([&](const sim::Passed& passed) { log->passed(passed); });
        }
        serve(simulator, log ? &*log : nullptr);
    } else
        throw UsageError{"no model given, --list names them"};
    return exitDone;
}

} // namespace

} // namespace karvo

int main(int count, char** arguments)
{
    try {
        return karvo::run(karvo::parse({arguments + std::min(1, count), arguments + count}));
    } catch (const karvo::UsageError& error) {
        std::cerr << "karvo-sim: " << error.message << '\n';
        return karvo::exitUsage;
    } catch (const std::exception& error) {
        std::cerr << "karvo-sim: " << error.what() << '\n';
        return karvo::exitFailed;
    }
}
