// Whole transfers of firmware to the simulated devices, with a clock that jumps.
#pragma once

#include "firmware/interface_update.h"
#include "firmware/upload.h"
#include "support/hex_file.h"
#include "support/simulated_line.h"
#include "support/test_bench.h"

namespace karvo::test
{

class StepCounter : public UploadObserver, public UpdateObserver
{
public:
    void showUpload(const UploadProgress&) override {}
    void showStep(const UploadStep&) override { ++steps; }
    void showSilence(EraseState) override {}
    void showHeader(const Text&) override {}
    void showStart(const Text&) override {}
    void showRecords(std::size_t, std::size_t) override {}
    void showEnd() override {}
    bool stopRequested() override { return false; }

    std::size_t steps = 0;
};

struct TransferBench : TestBench {
    TransferBench()
    {
        numberEveryText(state.texts);
        setText(state.texts, 426, u"UPDATE");
        state.link.interfaceAnswered = true;
    }
    UploadReport upload(std::size_t lines)
    {
        const auto image = std::get<HexImage>(parseHexImage(bytesOf(hexFile(lines))));
        return uploadImage(onSimulator, image, watcher);
    }
    UpdateEnd update(int records)
    {
        std::string content = "1F80\r\nUpdate Ende\r\n";
        for (int i = 0; i < records; ++i)
            content +=
                ":1000" + std::string(i % 2 == 0 ? "0102FF" : "FF00FF") + std::string(26, 'F') + "\r\n";
        addFile("a.uhx", content);
        return updateThroughInterface(onSimulator, {[] { return std::filesystem::path("program/a.uhx"); },
                                                    [](const std::filesystem::path&) {}, clock, watcher});
    }
    // Entries of the journal that begin so.
    std::ptrdiff_t count(std::string_view start) const
    {
        return std::count_if(journal.begin(), journal.end(),
                             [start](const std::string& entry) { return entry.starts_with(start); });
    }

    SimulatedLine device{sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::line, sim::Fault::none)};
    FixedClock clock;
    StepCounter watcher;
    Workbench onSimulator{state, device, device, prompts, view, files, settings};
};

} // namespace karvo::test
