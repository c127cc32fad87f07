// Whole transfers of firmware to the simulated boot loader and the simulated interface: as they should be,
// with the adapter pulled at every step, and with replies that are late, garbled, too long or missing.
#include "firmware/transfer_bench.h"
#include "link/identification.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

// One message was told, and nothing is claimed. With the adapter plugged in again the interface is asked on a
// freshly opened port.
void expectToldAndUsable(test::TransferBench& bench, const char* message, bool programEnds)
{
    EXPECT_EQ(bench.count("message"), 1);
    EXPECT_EQ(bench.count(message), 1);
    EXPECT_EQ(bench.count("end program"), programEnds ? 1 : 0);
    EXPECT_EQ(bench.count("status"), 0);
    EXPECT_FALSE(bench.device.isOpen());
    EXPECT_FALSE(bench.state.lineBusy);
    Link link = bench.onSimulator.link();
    ASSERT_TRUE(EnsurePortOpen(link));
    EXPECT_EQ(IdentifyDecoder(link, ReadOnlyReceiver::refused), IdentificationEnd::identified);
    EXPECT_EQ(bench.state.link.typeCode, 7);
}

// 19 messages before the erase is sent, two of it, and two pages; 0 is a loader that hangs up behind the
// first page.
TEST(PulledAdapter, EndsAnUploadAtEachOfItsSteps)
{
    for (unsigned n = 0; n <= 23; ++n) {
        SCOPED_TRACE(n);
        test::TransferBench bench;
        bench.device.pullWithWrite(static_cast<int>(n));
        bench.device.setFault(n == 0 ? sim::Fault::hangUp : sim::Fault::none);
        const auto report = bench.upload(9);
        EXPECT_EQ(report.end, UploadEnd::lineLost);
        EXPECT_EQ(report.steps.size(), n != 0 ? n : 22U);
        EXPECT_EQ(bench.watcher.steps, report.steps.size());
        EXPECT_FALSE(report.isAccepted());
        expectToldAndUsable(bench, n == 0 || n >= 20 ? "message m853" : "message m872", false);
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
        test::TransferBench bench;
        if (moment == 0ms)
            bench.device.setFault(sim::Fault::hangUp);
        else
            bench.device.pullAt(moment);
        const auto end = bench.update(2);
        over = end == UpdateEnd::sent;
        if (over)
            EXPECT_GT(moment, 190ms);
        else
            expectToldAndUsable(bench, end == UpdateEnd::brokenOff ? "message m851" : "message m233",
                                end == UpdateEnd::brokenOff);
        EXPECT_TRUE(over || end == UpdateEnd::brokenOff || end == UpdateEnd::noReply);
        EXPECT_EQ(bench.device.simulator().update().isComplete(), over);
    }
}

// Nothing that is sent depends on a reply: every page and record goes out once and in order, unless an update
// meets silence. What the replies say is told.
TEST(Transfer, IsWholeWhateverTheRepliesAre)
{
    struct Case {
        sim::Fault fault;
        bool accepted; // by the loader
        UpdateEnd updateEnd;
        const char* told; // the last but one of the journal
    };
    const Case cases[] = {{sim::Fault::none, true, UpdateEnd::sent, "status c670"},
                          {sim::Fault::lateReply, false, UpdateEnd::brokenOff, "end program"},
                          {sim::Fault::garbledReply, false, UpdateEnd::notConfirmed, "message m858"},
                          {sim::Fault::refusedFrame, true, UpdateEnd::notConfirmed, "message m858"},
                          {sim::Fault::excessReply, false, UpdateEnd::notConfirmed, "message m858"},
                          {sim::Fault::silentUpdate, true, UpdateEnd::brokenOff, "end program"}};
    for (const Case& expected : cases) {
        SCOPED_TRACE(static_cast<int>(expected.fault));
        test::TransferBench bench;
        bench.device.setFault(expected.fault);
        const auto report = bench.upload(20);
        EXPECT_EQ(report.end, UploadEnd::sent);
        EXPECT_EQ(report.isAccepted(), expected.accepted);
        const auto& flash = bench.device.simulator().bootLoader().flash();
        ASSERT_EQ(flash.size(), 384U);
        for (std::size_t i = 0; i < flash.size(); ++i)
            ASSERT_EQ(flash[i], i < 320 ? test::flashByte(i) : 0xFF) << i;

        EXPECT_EQ(bench.update(9), expected.updateEnd);
        bench.device.until([] { return false; }, 1000ms);
        const auto& update = bench.device.simulator().update();
        const bool whole = expected.updateEnd != UpdateEnd::brokenOff;
        EXPECT_EQ(update.isComplete(), whole);
        ASSERT_EQ(update.image().size(), whole ? 9U * 16 : 16U);
        EXPECT_TRUE(update.image()[0] == 0x01 && update.image()[2] == 0xFF);
        EXPECT_TRUE(!whole || (update.image()[16] == 0xFF && update.image()[17] == 0x00));
        EXPECT_TRUE(!whole || update.date() == (std::array{2026, 11, 22}));
        EXPECT_EQ(bench.journal[bench.journal.size() - 2], expected.told);
        EXPECT_FALSE(bench.state.lineBusy);
    }
}

TEST(Transfer, OfAWholeFlashTakesTheWireItsTimeAndTheErasesWait)
{
    test::TransferBench bench;
    const auto report = bench.upload(2048);
    EXPECT_EQ(report.pagesAccepted(), 256U);
    EXPECT_EQ(report.erase(), EraseState::erased) << "though it is answered short";
    EXPECT_EQ(report.steps[19].reply.size(), 8U);
    // 256 pages of 144 bytes out and 8 back are 3.38 s at 115200 baud; the erase waits 5 s.
    EXPECT_GT(bench.device.now(), sim::Time(8380ms));
    EXPECT_LT(bench.device.now(), sim::Time(8480ms));
}

} // namespace
} // namespace karvo
