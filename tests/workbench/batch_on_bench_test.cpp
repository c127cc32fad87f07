#include "workbench/batch_on_bench.h"

#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/change_value.h"
#include "workbench/list_files.h"

namespace karvo::test
{

TEST(BatchOnBenchTest, TheSetOnTheBenchFollowsItsFileAndKeepsWhatIsUnsaved)
{
    const auto nothing = [](ProgramState&) {};
    const struct {
        const char* what;
        std::function<void(ProgramState&)> before;
        std::filesystem::path file;
        bool done;
        bool isTaken;
        bool isMarked; // as a change
    } cases[] = {
        {"an opened list", nothing, "lists/../lists/bus.kvr", true, true, false},
        {"read and saved", [](auto& s) { s.set.offlineItem.clear(); }, "lists/bus.kvr", true, true, true},
        {"a refused file", nothing, "lists/bus.kvr", false, false, false},
        {"another file", nothing, "lists/other.kvr", true, false, false},
        {"a set without a file", [](auto& s) { s.set.listPath.clear(); }, "", true, false, false},
        {"a busy line", [](auto& s) { s.lineBusy = true; }, "lists/bus.kvr", true, false, false},
        {"no list", [](auto& s) { s.set.list.clear(); }, "lists/bus.kvr", true, false, false},
    };
    for (const auto& [what, before, path, done, isTaken, isMarked] : cases) {
        TestBench on;
        on.files.content["lists/bus.kvr"] = bytesOf("Standard KV07*5\r\n1;42;a;0;255;3;\r\n2;5;b;0;255;5;\r\n"
                                                    "Ende CV\r\nATmega328\r\nEnde FS\r\n");
        ASSERT_TRUE(openList(on.bench, "lists/bus.kvr"));
        changeValue(on.bench, 1, 43);
        before(on.state);
        on.journal.clear();
        std::vector<BatchFile> batch(2);
        batch[1].path = path;
        batch[1].rows = {{2, u"5", 9}};
        batch[1].done = done;
        takeBatchChanges(on.bench, batch);
        const CvSet& set = on.state.set;
        EXPECT_EQ(set.table.value(2), isTaken ? 9 : 5) << what;
        EXPECT_EQ(isChanged(set, 2), isMarked) << what;
        EXPECT_EQ(set.table.value(1), 43) << what;
        EXPECT_TRUE(isChanged(set, 1) && set.unsavedChanges) << what;
        EXPECT_EQ(joined(on.journal), isTaken ? "list changed" : "") << what;
    }
}

} // namespace karvo::test
