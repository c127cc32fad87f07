#include "workbench/forms/more_cvs_dialog.h"

#include "cvdata/changes.h"
#include "form_bench.h"
#include "workbench/change_value.h"
#include "workbench/list_files.h"

#include <QSpinBox>
#include <QTableWidget>

namespace karvo::test
{
namespace
{

struct MoreCvsBench : FormBench {
    Change_more_CV window{bench};

    MoreCvsBench()
    {
        put("a.kvr", smallList("Standard KV07*6", "3;4;eins;1;126;\r\n4;8;x;0;255;\r\n"));
        put("b.kvr", smallList("Standard KV07*6", "3;4;eins;1;99;\r\n4;8;x;0;255;\r\n"));
    }

    void addFile(const char* name)
    {
        prompts.chooseFile("lists/" + std::string(name));
        find<QPushButton>(window, "AddFiles").click();
        waitUntilIdle();
    }
    void addChange(int cv, int value)
    {
        find<QSpinBox>(window, "CV").setValue(cv);
        find<QSpinBox>(window, "Value").setValue(value);
        find<QPushButton>(window, "AddChange").click();
        waitUntilIdle();
    }
    void waitUntilIdle()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !find<QPushButton>(window, "Anhalten").isEnabled(); }));
    }
    std::vector<std::string> rows()
    {
        auto& table = find<QTableWidget>(window, "Preview");
        std::vector<std::string> texts;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table.columnCount(); ++column)
                cells.append(table.item(row, column)->text());
            texts.push_back(cells.join(u'|').toStdString());
        }
        return texts;
    }
    bool canApply() { return find<QPushButton>(window, "Apply").isEnabled(); }
    std::string told() { return find<QLabel>(window, "State").text().toStdString(); }
};

using Rows = std::vector<std::string>;

} // namespace

TEST(Change_more_CV, PreviewsAndChanges)
{
    MoreCvsBench bench;
    EXPECT_FALSE(bench.canApply());
    bench.addFile("a.kvr");
    bench.addFile("b.kvr");
    bench.addFile("a.kvr"); // it is there already
    EXPECT_FALSE(bench.canApply());
    bench.addChange(3, 50);
    bench.addChange(3, 100); // instead
    bench.addChange(4, 8);
    EXPECT_EQ(bench.rows(), (Rows{"a.kvr|CV3|4|100|wird geändert", "a.kvr|CV4|8|8|ist schon so",
                                  "b.kvr|CV3|4|100|" + std::string("CV3 darf hier nur von 1 bis 99 gehen"),
                                  "b.kvr|CV4|8|8|Datei bleibt unverändert"}));
    EXPECT_EQ(bench.told(), "Zu ändern: 1 Dateien. Abgelehnt: 1.");
    ASSERT_TRUE(bench.canApply());
    const std::string other = bench.saved("b.kvr");
    find<QPushButton>(bench.window, "Apply").click();
    bench.waitUntilIdle();
    EXPECT_EQ(bench.rows()[0], "a.kvr|CV3|4|100|geändert");
    EXPECT_EQ(bench.told(), "Erledigt: 1 Dateien. Unverändert gelassen: 1.");
    EXPECT_NE(bench.saved("a.kvr").find("\r\n3;100;eins;"), std::string::npos);
    EXPECT_EQ(bench.saved("b.kvr"), other);
    EXPECT_FALSE(bench.canApply()) << "all of it is done";
}

TEST(Change_more_CV, AFailingFileIsLeftAndTheOthersAreDone)
{
    MoreCvsBench bench;
    bench.addFile("missing.kvr");
    bench.addFile("a.kvr");
    bench.addChange(4, 9);
    find<QPushButton>(bench.window, "Apply").click();
    bench.waitUntilIdle();
    ASSERT_EQ(bench.rows().size(), 2U);
    EXPECT_TRUE(bench.rows()[0].starts_with("missing.kvr||||"));
    EXPECT_EQ(bench.rows()[1], "a.kvr|CV4|8|9|geändert");
}

TEST(Change_more_CV, TheListOnTheBenchFollowsItsFile)
{
    MoreCvsBench bench;
    ASSERT_TRUE(openList(bench.bench, "lists/a.kvr"));
    ASSERT_EQ(changeValue(bench.bench, 3, 77), ChangeEnd::changed);
    bench.addFile("a.kvr");
    bench.addChange(4, 9);
    find<QPushButton>(bench.window, "Apply").click();
    bench.waitUntilIdle();
    const CvSet& set = bench.state.set;
    EXPECT_EQ(set.table.value(4), 9);
    EXPECT_FALSE(isChanged(set, 4)) << "it stands in the file";
    EXPECT_EQ(set.table.value(3), 77) << "what is unsaved stays";
    EXPECT_TRUE(isChanged(set, 3) && set.unsavedChanges);
    ASSERT_TRUE(saveListAs(bench.bench, set.listPath));
    EXPECT_NE(bench.saved("a.kvr").find("\r\n3;77;eins;1;126;\r\n4;9;x;"), std::string::npos);
}

TEST(Change_more_CV, AVehiclesValuesStayMeasuredAgainstTheVehicle)
{
    MoreCvsBench bench;
    ASSERT_TRUE(openList(bench.bench, "lists/a.kvr"));
    bench.state.set.offlineItem.clear(); // read from a vehicle and saved as this file
    bench.addFile("a.kvr");
    bench.addFile("b.kvr");
    bench.addChange(4, 9);
    find<QPushButton>(bench.window, "Apply").click();
    bench.waitUntilIdle();
    EXPECT_EQ(bench.state.set.table.value(4), 9);
    EXPECT_TRUE(isChanged(bench.state.set, 4)) << "the vehicle holds another value";
    EXPECT_FALSE(bench.state.set.unsavedChanges);
}

TEST(Change_more_CV, StopsAndGoesOnWithTheRest)
{
    MoreCvsBench bench;
    bench.addFile("a.kvr");
    bench.addFile("b.kvr");
    bench.addChange(4, 9);
    auto& apply = find<QPushButton>(bench.window, "Apply");
    apply.click();
    EXPECT_FALSE(bench.canApply());
    EXPECT_FALSE(find<QPushButton>(bench.window, "AddFiles").isEnabled());
    find<QPushButton>(bench.window, "Anhalten").click(); // before the first file
    QTest::qWait(20);
    EXPECT_EQ(bench.files.saves, 0);
    EXPECT_EQ(bench.rows(), (Rows{"a.kvr|CV4|8|9|wird geändert", "b.kvr|CV4|8|9|wird geändert"}));
    EXPECT_EQ(bench.told(), "Erledigt: 0 Dateien. Unverändert gelassen: 2.");
    ASSERT_TRUE(bench.canApply());
    apply.click();
    bench.waitUntilIdle();
    EXPECT_EQ(bench.files.saves, 2);
    apply.click(); // disabled: nothing is left
    bench.addChange(4, 10);
    find<QPushButton>(bench.window, "Apply").click();
    find<QPushButton>(bench.window, "Schliessen").click();
    QTest::qWait(20);
    EXPECT_EQ(bench.files.saves, 2) << "whoever closes the window stops";
}

TEST(Change_more_CV, TakesFilesAndChangesAwayAgain)
{
    MoreCvsBench bench;
    bench.addFile("a.kvr");
    bench.addFile("b.kvr");
    bench.addChange(3, 5);
    bench.addChange(4, 9);
    find<QListWidget>(bench.window, "Files").setCurrentRow(0);
    find<QPushButton>(bench.window, "RemoveFiles").click();
    bench.waitUntilIdle();
    find<QListWidget>(bench.window, "Changes").setCurrentRow(1);
    find<QPushButton>(bench.window, "RemoveChanges").click();
    bench.waitUntilIdle();
    EXPECT_EQ(bench.rows(), (Rows{"b.kvr|CV3|4|5|wird geändert"}));
    find<QPushButton>(bench.window, "Schliessen").click();
    EXPECT_EQ(bench.files.saves, 0);
}

} // namespace karvo::test
