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
    EXPECT_TRUE(report.steps.back().isMissing());
    EXPECT_EQ(count("message"), 1);
    EXPECT_EQ(count("message m853"), 1);
    EXPECT_EQ(count("end program"), 0);
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(EveryMessage, UploadPulledTest, testing::Range(1, 24));

class UpdatePulledTest : public TransferFaultTest
{
};

constexpr int writesBeforeUpdateMode = 3; // "%", "B", "O"
constexpr int writesOfTwoRecords = 3 + 2 * 17;
constexpr int lastWrite = writesBeforeUpdateMode + writesOfTwoRecords + 1; // the closing block

// Until the interface is in its update mode the decoder is as it was; from then on the program ends, after
// it has said what to do.
TEST_P(UpdatePulledTest, TellsItOnceAndClaimsNothing)
{
    device.pullWithWrite(GetParam());
    const bool begun = GetParam() > writesBeforeUpdateMode;
    EXPECT_EQ(update(2), begun ? UpdateEnd::brokenOff : UpdateEnd::noReply);
    EXPECT_EQ(count("message"), 1);
    EXPECT_EQ(count(begun ? "message m851" : "message no reply"), 1);
    EXPECT_EQ(count("end program"), begun ? 1 : 0);
    EXPECT_EQ(count("status sent"), 0);
    EXPECT_FALSE(device.simulator().update().isComplete());
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(EveryWrite, UpdatePulledTest, testing::Range(1, lastWrite + 1));

// Every 7 ms of the update's 300 ms: in pauses too, where nothing is being awaited from the line.
class UpdatePulledLaterTest : public TransferFaultTest
{
};

TEST_P(UpdatePulledLaterTest, TellsItOnceAndClaimsNothing)
{
    device.pullAt(GetParam() * 1ms);
    const auto end = update(2);
    EXPECT_TRUE(end == UpdateEnd::brokenOff || end == UpdateEnd::noReply);
    EXPECT_EQ(count("message"), 1);
    EXPECT_EQ(count("status sent"), 0);
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(Moments, UpdatePulledLaterTest, testing::Range(0, 190, 7));

struct OddReply {
    const char* name;
    sim::Fault fault;
    std::size_t leastMissing; // replies of the upload; the erase's is always short
    UpdateEnd updateEnd;
};

void PrintTo(const OddReply& odd, std::ostream* out)
{
    *out << odd.name;
}

class OddReplyTest : public testing::TestWithParam<OddReply>, public test::TransferBench
{
protected:
    OddReplyTest() { device.setFault(GetParam().fault); }
};

// What the loader says is not examined: every page is sent once and in order.
TEST_P(OddReplyTest, TheLoaderStillGetsTheWholeFile)
{
    const auto report = upload(40);
    EXPECT_EQ(report.end, UploadEnd::sent);
    EXPECT_EQ(report.pagesSent(), 5U);
    EXPECT_GE(report.missingReplies(), GetParam().leastMissing);
    const auto& flash = device.simulator().bootLoader().flash();
    ASSERT_EQ(flash.size(), 640U);
    for (std::size_t i = 0; i < flash.size(); ++i)
        ASSERT_EQ(flash[i], test::flashByte(i)) << i;
}

TEST_P(OddReplyTest, TheUpdateEndsAsItsRepliesAllow)
{
    EXPECT_EQ(update(9), GetParam().updateEnd);
    device.until([] { return false; }, 1000ms);
    const bool sent = GetParam().updateEnd == UpdateEnd::sent;
    EXPECT_EQ(device.simulator().update().isComplete(), sent);
    EXPECT_EQ(device.simulator().update().image().size(), sent ? 9U * 16 : 16U);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "message m851"), sent ? 0 : 1);
    EXPECT_FALSE(state.lineBusy);
}

const OddReply oddReplies[] = {
    {"Late", sim::Fault::lateReply, 2, UpdateEnd::brokenOff},
    {"Garbled", sim::Fault::garbledReply, 1, UpdateEnd::sent},
    {"TooMuch", sim::Fault::excessReply, 1, UpdateEnd::sent},
};

INSTANTIATE_TEST_SUITE_P(Replies, OddReplyTest, testing::ValuesIn(oddReplies),
                         [](const auto& tested) { return tested.param.name; });

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
    EXPECT_EQ(report.pagesSent(), 1U);
    EXPECT_EQ(count("message"), 1);
    expectUsable();
}

} // namespace
} // namespace karvo
