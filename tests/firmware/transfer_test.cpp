// Whole transfers of firmware to the simulated boot loader and the simulated interface: as they should be,
// with the adapter pulled at every step, and with replies that are late, garbled, too long or missing.
#include "firmware/interface_update.h"
#include "firmware/upload_verdict.h"
#include "link/identification.h"
#include "support/hex_file.h"
#include "support/simulated_line.h"
#include "support/test_bench.h"

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

struct Unwatched : UploadObserver, UpdateObserver {
    void showUpload(const UploadProgress&) override {}
    void showStep(const UploadStep&) override {}
    void showSilence(EraseState) override {}
    void showHeader(const Text&) override {}
    void showStart(const Text&) override {}
    void showEnd() override {}
    bool stopRequested() override { return false; }
};

struct TransferBench : test::TestBench {
    TransferBench()
    {
        test::numberEveryText(state.texts);
        test::setText(state.texts, 426, u"UPDATE");
        test::setTexts(state.texts, {}, {{647, u"all {1}"}, {649, u"not {1}."}, {654, u"{1} of {2}"}});
        test::setTexts(state.texts, {}, {{658, u"{1}"}, {662, u"and {1} more"}});
        state.link.interfaceAnswered = true;
    }
    UploadReport upload(std::size_t lines)
    {
        const auto image = std::get<HexImage>(parseHexImage(test::bytesOf(test::hexFile(lines))));
        return uploadImage(onSimulator, image, watcher);
    }
    UpdateEnd update(int records)
    {
        std::string content = "1F80\r\nUpdate Ende\r\n";
        for (int i = 0; i < records; ++i)
            content += ":1000" + std::string(32, 'F') + "\r\n";
        addFile("a.uhx", content);
        return updateThroughInterface(onSimulator, {[] { return std::filesystem::path("program/a.uhx"); },
                                                    [](const std::filesystem::path&) {}, clock, watcher});
    }
    // What the person has been told, and whether the program ends.
    std::string told() const
    {
        std::string all;
        for (const std::string& entry : journal)
            if (entry.starts_with("message") || entry.starts_with("status") || entry == "end program")
                all += entry + " ";
        return all;
    }

    test::SimulatedLine device{
        sim::Simulator(*sim::decoderByName("kv07"), sim::Pace::line, sim::Fault::none)};
    test::FixedClock clock;
    Unwatched watcher;
    Workbench onSimulator{state, device, device, prompts, view, files, settings};
};

// One message was told, and nothing is claimed. With the adapter plugged in again the interface is asked on a
// freshly opened port.
void expectToldAndUsable(TransferBench& bench, const char* told)
{
    EXPECT_EQ(bench.told(), told);
    EXPECT_FALSE(bench.device.isOpen());
    EXPECT_FALSE(bench.state.lineBusy);
    Link link = bench.onSimulator.link();
    ASSERT_TRUE(EnsurePortOpen(link));
    EXPECT_EQ(IdentifyDecoder(link, ReadOnlyReceiver::refused), IdentificationEnd::identified);
}

// 19 messages before the erase is sent, two of it, and two pages; 0 is a loader that hangs up behind the
// first page.
TEST(PulledAdapter, EndsAnUploadAtEachOfItsSteps)
{
    for (unsigned n = 0; n <= 23; ++n) {
        SCOPED_TRACE(n);
        TransferBench bench;
        bench.device.pullWithWrite(static_cast<int>(n));
        bench.device.setFault(n == 0 ? sim::Fault::hangUp : sim::Fault::none);
        const auto report = bench.upload(9);
        EXPECT_EQ(report.end, UploadEnd::lineLost);
        EXPECT_EQ(report.steps.size(), n != 0 ? n : 22U);
        expectToldAndUsable(bench, n == 0 || n >= 20 ? "message m853 " : "message m872 ");
    }
}

// Every 7 ms of the update, until it is over: in pauses too, where nothing is being awaited from the line.
// Until the interface is in its update mode the decoder is as it was; from then on the program ends, after it
// has said what to do. 0 is an interface that hangs up behind the first record.
TEST(PulledAdapter, EndsAnUpdateAtEachMoment)
{
    bool over = false;
    for (auto moment = 0ms; !over; moment += 7ms) {
        SCOPED_TRACE(moment.count());
        TransferBench bench;
        if (moment == 0ms)
            bench.device.setFault(sim::Fault::hangUp);
        else
            bench.device.pullAt(moment);
        const auto end = bench.update(2);
        over = end == UpdateEnd::sent;
        if (over)
            EXPECT_GT(moment, 190ms);
        else
            expectToldAndUsable(bench, end == UpdateEnd::brokenOff ? "message m851 end program "
                                                                   : "message m233\r\nm873 ");
        EXPECT_TRUE(over || end == UpdateEnd::brokenOff || end == UpdateEnd::noReply);
        EXPECT_EQ(bench.device.simulator().update().isComplete(), over);
    }
}

// Nothing that is sent depends on a reply: every page and record goes out once and in order, unless an update
// meets silence. What the replies say is told.
TEST(Transfer, IsWholeWhateverTheRepliesAre)
{
    const std::string all = "all 256";
    // How the verdict on the upload begins, its pages in the flash, and how an update ends.
    const std::tuple<sim::Fault, std::string, std::size_t, UpdateEnd> cases[] = {
        {sim::Fault::none, all, 256, UpdateEnd::sent},
        {sim::Fault::strictLoader, all, 256, UpdateEnd::sent},
        {sim::Fault::terseLoader, all, 256, UpdateEnd::sent},
        {sim::Fault::refusedFrame, all, 256, UpdateEnd::notConfirmed},
        {sim::Fault::silentUpdate, all, 256, UpdateEnd::brokenOff},
        {sim::Fault::lateReply, "not 256 (c660).\r\n255 of 256", 256, UpdateEnd::brokenOff},
        {sim::Fault::garbledReply, "not 1 (c660), 2 (c660)", 256, UpdateEnd::notConfirmed},
        {sim::Fault::excessReply, "not ", 256, UpdateEnd::notConfirmed},
        {sim::Fault::changedByte, "not 4 (c632).\r\n255 of 256\r\nc652 c650", 255, UpdateEnd::sent},
        {sim::Fault::silentLoader,
         "not 1 (c632), 2 (c632), 3 (c632), 4 (c632), 5 (c632), 6 (c632) and 250 more.", 256,
         UpdateEnd::sent},
        {sim::Fault::silence, "c648\r\nc653 c650", 0, UpdateEnd::noReply},
    };
    for (const auto& [fault, begin, flashed, updateEnd] : cases) {
        SCOPED_TRACE(static_cast<int>(fault));
        TransferBench bench;
        bench.device.setFault(fault);
        const auto report = bench.upload(2048);
        const auto told = utf8FromText(uploadVerdict(bench.state.texts, report));
        EXPECT_TRUE(told.starts_with(begin)) << told;
        EXPECT_EQ(report.isAccepted(), begin == all);
        const auto& flash = bench.device.simulator().bootLoader().flash();
        ASSERT_EQ(flash.size(), flashed * 128);
        for (std::size_t i = 0; flashed == 256 && i < flash.size(); ++i)
            ASSERT_EQ(flash[i], test::flashByte(i)) << i;

        EXPECT_EQ(bench.update(9), updateEnd);
        bench.device.until([] { return false; }, 1000ms);
        const bool whole = updateEnd == UpdateEnd::sent || updateEnd == UpdateEnd::notConfirmed;
        const auto& update = bench.device.simulator().update();
        EXPECT_EQ(update.isComplete(), whole);
        EXPECT_TRUE(!whole || update.image().size() == 9U * 16);
    }
}

} // namespace
} // namespace karvo
