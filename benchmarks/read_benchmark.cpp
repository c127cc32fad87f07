#include "benchmarks.h"

#include "language/language_loader.h"
#include "platform/qt_files.h"
#include "platform/qt_settings.h"
#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "workbench/full_read.h"

#include <QTemporaryDir>

#include <chrono>
#include <ctime>

namespace karvo::bench
{

namespace
{

using Clock = std::chrono::steady_clock;

// "%" and "27", "ER" and the long block with its check byte, 10 bits a byte.
constexpr double wireSeconds = (1 + 2 + 2 + 1025) * 10.0 / 4800.0;
constexpr int runs = 5;

double seconds(Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

class QuietPrompts : public Prompts
{
public:
    void message(const Text&, PromptIcon) override {}
    bool question(const Text&) override { return false; }
    std::optional<Text> input(const Text&, const Text&, const Text&) override { return std::nullopt; }
    void endProgram() override {}
};

// Notes when the block was complete, and when the list was.
class TimingView : public View
{
public:
    void showStatus(const Text&) override {}
    void showProgress(std::size_t done, std::size_t total) override
    {
        if (total != 0 && done == total)
            lastByte = Clock::now();
    }
    void showHourglass(bool) override {}
    void showLineBusy(bool) override {}
    void listChanged() override { listFilled = Clock::now(); }

    Clock::time_point lastByte;
    Clock::time_point listFilled;
};

struct Bench {
    Bench(const std::filesystem::path& programFolder, sim::Fault fault)
        : port(sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::line, fault), 1),
          settings(folder.filePath(QStringLiteral("settings.ini")))
    {
        state.programFolder = programFolder;
        loadLanguage(state.texts, LanguageCode::german, programFolder, files);
        port.setNotice([this] { wait.wake(); });
    }

    QTemporaryDir folder;
    SimulatedPort port;
    QtWait wait;
    QuietPrompts prompts;
    TimingView view;
    QtFiles files;
    QtSettings settings;
    ProgramState state;
    Workbench workbench{state, port, wait, prompts, view, files, settings};
};

} // namespace

std::vector<Row> measureReading(const std::filesystem::path& programFolder)
{
    std::vector<double> ratios;
    std::vector<double> afterwards;
    for (int run = 0; run < runs; ++run) {
        Bench bench(programFolder, sim::Fault::none);
        const auto start = Clock::now();
        readIntoList(bench.workbench, ReadStarter::other);
        ratios.push_back(seconds(bench.view.listFilled - start) / wireSeconds);
        afterwards.push_back(seconds(bench.view.listFilled - bench.view.lastByte) * 1000);
    }
    Bench silent(programFolder, sim::Fault::silence);
    const auto start = Clock::now();
    const auto cpuStart = std::clock();
    readIntoList(silent.workbench, ReadStarter::other);
    const double cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    return {{"full read of a KV07 over the paced line / wire time of its bytes", median(ratios), 1.02, "x"},
            {"last byte to filled list", median(afterwards), 16, "ms"},
            {"processor time while a silent decoder is awaited", 100 * cpu / seconds(Clock::now() - start), 1,
             "%"}};
}

} // namespace karvo::bench
