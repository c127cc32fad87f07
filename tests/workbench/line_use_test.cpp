#include "workbench/line_use.h"

#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

class RecordedAwake : public StayAwake
{
public:
    explicit RecordedAwake(test::Journal& journal) : journal_(journal) {}
    void begin(const Text& why) override { journal_.push_back("awake: " + utf8FromText(why)); }
    void end() override { journal_.push_back("may sleep"); }

private:
    test::Journal& journal_;
};

TEST(LineUseTest, KeepsTheComputerAwakeForWhatLastsAndHasTheLineAlone)
{
    test::TestBench on;
    RecordedAwake awake(on.journal);
    on.bench.stayAwake = &awake;
    test::setCaption(on.state.texts, 826, u"writing");
    {
        const LineUse lasting(on.bench, LineTask::lasting);
        EXPECT_FALSE(LineUse(on.bench, LineTask::lasting).isGranted());
    }
    EXPECT_TRUE(LineUse(on.bench).isGranted());
    EXPECT_EQ(on.journal, (test::Journal{"busy", "awake: writing", "may sleep", "idle", "busy", "idle"}));
}

} // namespace
} // namespace karvo
