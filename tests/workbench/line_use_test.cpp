#include "workbench/line_use.h"

#include "support/test_bench.h"

namespace karvo::test
{

struct RecordedAwake : StayAwake {
    explicit RecordedAwake(Journal& kept) : journal(kept) {}
    void begin(const Text& why) override { journal.push_back("awake: " + utf8FromText(why)); }
    void end() override { journal.push_back("may sleep"); }
    Journal& journal;
};

TEST(LineUseTest, KeepsTheComputerAwakeForWhatLastsAndHasTheLineAlone)
{
    TestBench on;
    RecordedAwake awake(on.journal);
    on.bench.stayAwake = &awake;
    setCaption(on.state.texts, 826, u"writing");
    {
        const LineUse lasting(on.bench, LineTask::lasting);
        EXPECT_FALSE(LineUse(on.bench, LineTask::lasting).isGranted());
    }
    EXPECT_TRUE(LineUse(on.bench).isGranted());
    EXPECT_EQ(on.journal, (Journal{"busy", "awake: writing", "may sleep", "idle", "busy", "idle"}));
}

} // namespace karvo::test
