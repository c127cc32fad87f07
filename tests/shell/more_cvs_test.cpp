#include "workbench/forms/more_cvs_dialog.h"

#include "shell/form_bench.h"
#include "workbench/list_files.h"

#include <QSpinBox>
#include <QTableWidget>

namespace karvo::test
{

struct MoreCvsBench : FormBench {
    Change_more_CV window{bench};

    explicit MoreCvsBench(const std::string& filesToAdd = "")
    {
        put("a.kvr", smallList("Standard KV07*6", "3;4;eins;1;126;\r\n4;8;x;0;255;\r\n"));
        put("b.kvr", smallList("Standard KV07*6", "3;4;eins;1;99;\r\n4;8;x;0;255;\r\n"));
        for (const auto& name : wordsOf(filesToAdd)) {
            prompts.chooseFile("lists/" + name);
            act("AddFiles");
        }
    }

    // Clicks a button and waits until what it begins is done.
    void act(const char* button)
    {
        click(window, button);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !find(window, "Anhalten").isEnabled(); }));
    }
    void addChange(int cv, int value)
    {
        find<QSpinBox>(window, "CV").setValue(cv);
        find<QSpinBox>(window, "Value").setValue(value);
        act("AddChange");
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
    bool canApply() { return find(window, "Apply").isEnabled(); }
    std::string told() { return labelOf(window, "State"); }
};

using Rows = std::vector<std::string>;

TEST(Change_more_CV, PreviewsAndChangesAlsoTheListOnTheBench)
{
    EXPECT_FALSE(MoreCvsBench().canApply());
    MoreCvsBench bench("a.kvr b.kvr a.kvr"); // it is there already
    ASSERT_TRUE(openList(bench.bench, "lists/a.kvr"));
    EXPECT_FALSE(bench.canApply());
    bench.addChange(3, 50);
    bench.addChange(3, 100); // instead
    bench.addChange(4, 8);
    EXPECT_EQ(bench.rows(), (Rows{"a.kvr|CV3|4|100|wird geändert", "a.kvr|CV4|8|8|ist schon so",
                                  "b.kvr|CV3|4|100|CV3 darf hier nur von 1 bis 99 gehen",
                                  "b.kvr|CV4|8|8|Datei bleibt unverändert"}));
    EXPECT_EQ(bench.told(), "Zu ändern: 1 Dateien. Abgelehnt: 1.");
    ASSERT_TRUE(bench.canApply());
    const std::string other = bench.saved("b.kvr");
    bench.act("Apply");
    EXPECT_EQ(bench.rows()[0], "a.kvr|CV3|4|100|geändert");
    EXPECT_EQ(bench.told(), "Erledigt: 1 Dateien. Unverändert gelassen: 1.");
    EXPECT_NE(bench.saved("a.kvr").find("\r\n3;100;eins;"), std::string::npos);
    EXPECT_EQ(bench.saved("b.kvr"), other);
    EXPECT_FALSE(bench.canApply()) << "all of it is done";
    EXPECT_EQ(bench.state.set.table.value(3), 100);
}

TEST(Change_more_CV, StopsAndGoesOnWithTheRest)
{
    MoreCvsBench bench("a.kvr b.kvr");
    bench.addChange(4, 9);
    click(bench.window, "Apply");
    EXPECT_FALSE(bench.canApply() || find(bench.window, "AddFiles").isEnabled());
    click(bench.window, "Anhalten"); // before the first file
    QTest::qWait(20);
    EXPECT_EQ(bench.files.saves, 0);
    EXPECT_EQ(bench.rows(), (Rows{"a.kvr|CV4|8|9|wird geändert", "b.kvr|CV4|8|9|wird geändert"}));
    EXPECT_EQ(bench.told(), "Erledigt: 0 Dateien. Unverändert gelassen: 2.");
    ASSERT_TRUE(bench.canApply());
    bench.act("Apply");
    EXPECT_EQ(bench.files.saves, 2);
    click(bench.window, "Apply"); // disabled: nothing is left
    bench.addChange(4, 10);
    click(bench.window, "Apply");
    click(bench.window, "Schliessen");
    QTest::qWait(20);
    EXPECT_EQ(bench.files.saves, 2) << "whoever closes the window stops";
}

TEST(Change_more_CV, TakesFilesAndChangesAwayAgain)
{
    MoreCvsBench bench("a.kvr b.kvr");
    bench.addChange(3, 5);
    bench.addChange(4, 9);
    find<QListWidget>(bench.window, "Files").setCurrentRow(0);
    bench.act("RemoveFiles");
    find<QListWidget>(bench.window, "Changes").setCurrentRow(1);
    bench.act("RemoveChanges");
    EXPECT_EQ(bench.rows(), (Rows{"b.kvr|CV3|4|5|wird geändert"}));
    click(bench.window, "Schliessen");
    EXPECT_EQ(bench.files.saves, 0);
}

} // namespace karvo::test
