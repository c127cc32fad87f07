// A workbench on a simulated KV07 whose line takes the time that a real one takes.
#pragma once

#include "language/language_loader.h"
#include "platform/qt_files.h"
#include "platform/qt_settings.h"
#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "workbench/workbench.h"

#include <QTemporaryDir>

#include <chrono>

namespace karvo::bench
{

using Clock = std::chrono::steady_clock;

inline double seconds(Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

class QuietPrompts : public Prompts
{
public:
    void message(const Text&, PromptIcon) override {}
    void error(const Text&) override {}
    bool question(const Text&) override { return false; }
    std::optional<Text> input(const Text&, const Text&, const Text&) override { return std::nullopt; }
    std::optional<std::size_t> choice(const Text&, const Text&, const std::vector<Text>&,
                                      std::size_t current) override
    {
        return current;
    }
    std::optional<std::filesystem::path> openFile(const FileRequest&) override { return std::nullopt; }
    std::vector<std::filesystem::path> openFiles(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> saveFile(const FileRequest&) override { return std::nullopt; }
    SaveChoice saveChanges(const Text&) override { return SaveChoice::discard; }
    void endProgram() override {}
};

// Notes when the block was complete, and when the list was.
class TimingView : public View
{
public:
    void showStatus(const Text&) override {}
    Text statusText() const override { return {}; }
    void showProgress(std::size_t done, std::size_t total) override
    {
        if (total != 0 && done == total)
            lastByte = Clock::now();
    }
    void showWriteProgress(int, std::size_t) override {}
    void showHourglass(bool) override {}
    void showLineBusy(bool) override {}
    void listChanged() override { listFilled = Clock::now(); }

    Clock::time_point lastByte;
    Clock::time_point listFilled;
};

struct PacedBench {
    explicit PacedBench(const std::filesystem::path& programFolder, sim::Fault fault = sim::Fault::none)
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

} // namespace karvo::bench
