// Transfers of firmware that do not go as they should: the adapter pulled at every step, and replies that are
// late, garbled or too long.
#include "firmware/transfer_bench.h"
#include "link/identification.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

class TransferFaultTest : public testing::TestWithParam<int>, public test::TransferBench
{
protected:
    std::ptrdiff_t count(std::string_view start) const
    {
        return std::count_if(journal.begin(), journal.end(),
                             [start](const std::string& entry) { return entry.starts_with(start); });
    }

    // The adapter is plugged in again: the interface is asked on a freshly opened port.
    void expectUsable()
    {
        EXPECT_FALSE(device.isOpen());
        EXPECT_FALSE(state.lineBusy);
        Link link = onSimulator.link();
        ASSERT_TRUE(EnsurePortOpen(link));
        EXPECT_EQ(IdentifyDecoder(link, ReadOnlyReceiver::refused), IdentificationEnd::identified);
        EXPECT_EQ(state.link.typeCode, 7);
    }
};

class UploadPulledTest : public TransferFaultTest
{
};

// 21 messages and two pages: n is the message with which the adapter goes.
TEST_P(UploadPulledTest, TellsItOnceAndLeavesTheProgramUsable)
{
    device.pullWithWrite(GetParam());
    const auto report = upload(9);
    EXPECT_EQ(report.end, UploadEnd::lineLost);
    EXPECT_EQ(static_cast<int>(report.steps.size()), GetParam());
    EXPECT_FALSE(report.isAccepted());
    EXPECT_EQ(count("message"), 1);
    EXPECT_EQ(count("message m853"), 1);
    EXPECT_EQ(count("end program"), 0);
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(EveryMessage, UploadPulledTest, testing::Range(1, 24));

// Every 7 ms of the update's 300 ms: in pauses too, where nothing is being awaited from the line.
class UpdatePulledLaterTest : public TransferFaultTest
{
};

TEST_P(UpdatePulledLaterTest, TellsItOnceAndClaimsNothing)
{
    device.pullAt(GetParam() * 1ms);
    const auto end = update(2);
    // Until the interface is in its update mode the decoder is as it was; from then on the program ends,
    // after it has said what to do.
    const bool begun = end == UpdateEnd::brokenOff;
    EXPECT_TRUE(begun || end == UpdateEnd::noReply);
    EXPECT_EQ(count("message"), 1);
    EXPECT_EQ(count(begun ? "message m851" : "message no reply"), 1);
    EXPECT_EQ(count("end program"), begun ? 1 : 0);
    EXPECT_FALSE(device.simulator().update().isComplete());
    EXPECT_EQ(count("status sent"), 0);
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(Moments, UpdatePulledLaterTest, testing::Range(0, 190, 7));

// Nothing that is sent depends on a reply: every page and record goes out once and in order, unless an update
// meets silence. What the replies say is told.
TEST(OddReplyTest, ChangeWhatIsToldAndNothingThatIsSent)
{
    struct Case {
        sim::Fault fault;
        bool accepted; // by the loader
        UpdateEnd updateEnd;
    };
    const Case cases[] = {{sim::Fault::lateReply, false, UpdateEnd::brokenOff},
                          {sim::Fault::garbledReply, false, UpdateEnd::notConfirmed},
                          {sim::Fault::refusedFrame, true, UpdateEnd::notConfirmed},
                          {sim::Fault::excessReply, false, UpdateEnd::notConfirmed}};
    for (const Case& expected : cases) {
        test::TransferBench bench;
        bench.device.setFault(expected.fault);
        const auto report = bench.upload(40);
        EXPECT_EQ(report.end, UploadEnd::sent);
        EXPECT_EQ(report.isAccepted(), expected.accepted);
        const auto& flash = bench.device.simulator().bootLoader().flash();
        ASSERT_EQ(flash.size(), 640U);
        for (std::size_t i = 0; i < flash.size(); ++i)
            ASSERT_EQ(flash[i], test::flashByte(i)) << i;

        EXPECT_EQ(bench.update(9), expected.updateEnd);
        bench.device.until([] { return false; }, 1000ms);
        const bool whole = expected.updateEnd != UpdateEnd::brokenOff;
        EXPECT_EQ(bench.device.simulator().update().isComplete(), whole);
        EXPECT_EQ(bench.device.simulator().update().image().size(), whole ? 9U * 16 : 16U);
        EXPECT_EQ(std::count(bench.journal.begin(), bench.journal.end(),
                             whole ? "message unconfirmed" : "message m851"),
                  1);
        EXPECT_FALSE(bench.state.lineBusy);
    }
}

TEST_F(TransferFaultTest, AnInterfaceThatGoesAwayBehindARecordIsToldOnce)
{
    device.setFault(sim::Fault::hangUp);
    EXPECT_EQ(update(3), UpdateEnd::brokenOff);
    EXPECT_EQ(count("message"), 1);
    EXPECT_FALSE(device.isOpen());
}

TEST_F(TransferFaultTest, ALoaderThatGoesAwayBehindAPageIsToldOnce)
{
    device.setFault(sim::Fault::hangUp);
    const auto report = upload(24);
    EXPECT_EQ(report.end, UploadEnd::lineLost);
    EXPECT_EQ(report.steps.size(), 22U);
    EXPECT_EQ(count("message"), 1);
    expectUsable();
}

} // namespace
} // namespace karvo
