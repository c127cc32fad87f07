// Whole transfers of firmware to the simulated devices, with a clock that jumps.
#pragma once

#include "firmware/interface_update.h"
#include "firmware/upload.h"
#include "support/hex_file.h"
#include "support/simulated_line.h"
#include "support/test_bench.h"

namespace karvo::test
{

class NoTransferWatcher : public UploadObserver, public UpdateObserver
{
public:
    void showUpload(const UploadProgress&) override {}
    void showStep(const UploadStep&) override {}
    void showSilence(EraseState) override {}
    void showHeader(const Text&) override {}
    void showStart(const Text&) override {}
    void showRecords(std::size_t, std::size_t) override {}
    void showEnd() override {}
    bool stopRequested() override { return false; }
};

struct TransferBench : TestBench {
    TransferBench()
    {
        for (const int number : {308, 309, 310, 311, 313, 851, 853})
            setText(state.texts, number, u"m" + textFromNumber(number));
        setText(state.texts, 426, u"UPDATE");
        setText(state.texts, 858, u"unconfirmed");
        setCaption(state.texts, 670, u"sent");
    }

    UploadReport upload(std::size_t lines)
    {
        const auto image = std::get<HexImage>(parseHexImage(bytesOf(hexFile(lines))));
        return uploadImage(onSimulator, image, watcher);
    }

    UpdateEnd update(int records)
    {
        state.link.interfaceAnswered = true;
        std::string content = "1F80\r\nUpdate Ende\r\n";
        const std::string filler = "FFFFFFFFFFFFFFFFFFFFFFFFFF";
        for (int i = 0; i < records; ++i)
            content += ":1000" + std::string(i % 2 == 0 ? "0102FF" : "FF00FF") + filler + "\r\n";
        addFile("a.uhx", content);
        return updateThroughInterface(onSimulator, {[] { return std::filesystem::path("program/a.uhx"); },
                                                    [](const std::filesystem::path&) {}, clock, watcher});
    }

    SimulatedLine device{sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::line, sim::Fault::none)};
    FixedClock clock;
    NoTransferWatcher watcher;
    Workbench onSimulator{state, device, device, prompts, view, files, settings};
};

} // namespace karvo::test
