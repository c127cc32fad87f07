// Whole transfers to the simulated boot loader and the simulated interface.
#include "firmware/transfer_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

class SimulatedTransferTest : public testing::Test, public test::TransferBench
{
};

TEST_F(SimulatedTransferTest, TheLoaderHoldsTheFileAndAcceptsItThoughTheEraseIsAnsweredShort)
{
    const auto report = upload(20);
    EXPECT_TRUE(report.isAccepted());
    EXPECT_EQ(report.erase(), EraseState::erased);
    EXPECT_EQ(report.steps[19].reply.size(), 8U);
    const auto& flash = device.simulator().bootLoader().flash();
    ASSERT_EQ(flash.size(), 384U);
    for (std::size_t i = 0; i < flash.size(); ++i)
        EXPECT_EQ(flash[i], i < 320 ? test::flashByte(i) : 0xFF) << i;
}

TEST_F(SimulatedTransferTest, AWholeFlashTakesTheWireItsTimeAndTheErasesWait)
{
    const auto report = upload(2048);
    EXPECT_EQ(report.pagesAccepted(), 256U);
    // 256 pages of 144 bytes out and 8 back are 3.38 s at 115200 baud; the erase waits 5 s.
    EXPECT_GT(device.now(), sim::Time(8380ms));
    EXPECT_LT(device.now(), sim::Time(8480ms));
}

TEST_F(SimulatedTransferTest, TheInterfaceTakesEveryRecordAndTheDate)
{
    EXPECT_EQ(update(9), UpdateEnd::sent);
    device.until([] { return false; }, 1000ms);
    const auto& taken = device.simulator().update();
    ASSERT_EQ(taken.image().size(), 9U * 16);
    EXPECT_EQ(taken.image()[0], 0x01);
    EXPECT_EQ(taken.image()[2], 0xFF);
    EXPECT_EQ(taken.image()[17], 0x00);
    EXPECT_TRUE(taken.isComplete());
    EXPECT_EQ(taken.date(), (std::array{2026, 11, 22}));
}

TEST_F(SimulatedTransferTest, AnInterfaceThatFallsSilentEndsTheProgram)
{
    device.setFault(sim::Fault::silentUpdate);
    EXPECT_EQ(update(3), UpdateEnd::brokenOff);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "end program"), 1);
}

} // namespace
} // namespace karvo
