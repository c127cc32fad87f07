#include "editors/forms/bremsen.h"

#include "form_bench.h"
#include "workbench/offline_list.h"

#include <QLineEdit>

#include <functional>

namespace karvo::test
{
namespace
{

struct BrakingBench : FormBench {
    BrakingBench()
    {
        state.userFolders.distances.own = "abs";
        state.userFolders.cvLists.own = "lists";
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        for (const auto& [cv, value] : {std::pair{48, 10}, {52, 100}, {53, 30}, {54, 40}})
            state.set.table.setValue(cv, value);
        files.content["abs/Faller.bcr"] = bytesOf("K\r\n48;11;x;\r\n52;111;x;\r\n53;22;x;\r\n54;33;x\r\n");
        files.content["abs/CI_46.bcr"] = bytesOf("K\r\n52;112;x;\r\n53;999;x;\r\n");
        journal.clear();
    }
    static std::string fields(Bremsen& window)
    {
        std::string text;
        for (const char* const name : {"Text1", "Text2", "Text3", "Text4"})
            text += find<QLineEdit>(window, name).text().toStdString() + " ";
        return text;
    }
};

} // namespace

TEST(Bremsen, LoadsPresetsIntoItsFieldsAlone)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    EXPECT_EQ(bench.fields(window), "10 30 40 100 ");
    find<QAction>(window, "mnu_Faller").trigger();
    EXPECT_EQ(bench.fields(window), "10 22 33 111 ") << "CV48 stays";
    find<QAction>(window, "mnu_L_Faller").trigger();
    EXPECT_EQ(bench.fields(window), "11 22 33 111 ");
    find<QAction>(window, "mnu_L_CI46").trigger();
    EXPECT_EQ(bench.fields(window), "11 22 33 112 ");
    EXPECT_NE(bench.journal.back().find("abs/CI_46.bcr"), std::string::npos);
    EXPECT_NE(bench.journal.back().find("Zeile 3"), std::string::npos);
    find<QAction>(window, "mnu_aktuell").trigger();
    EXPECT_EQ(bench.fields(window), "10 30 40 100 ");
    find<QAction>(window, "mnu_L_CI26").trigger(); // there is none
    EXPECT_NE(bench.journal.back().find("abs/CI_26.bcr"), std::string::npos);
    bench.prompts.chooseFile("abs/Faller.bcr");
    find<QAction>(window, "menu_L_Datei").trigger();
    EXPECT_EQ(bench.journal.back(), "open *.bcr in abs: ");
    EXPECT_EQ(bench.fields(window), "11 22 33 111 ");
    EXPECT_EQ(bench.state.set.table.value(53), 30);
    Bremsen other(bench.bench, "Faller.bcr");
    EXPECT_EQ(bench.fields(other), "10 22 33 111 ");
}

TEST(Bremsen, RefusesValuesOutsideTheirRange)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    auto& threshold = find<QLineEdit>(window, "Text4");
    threshold.setText(QStringLiteral("95"));
    find<QPushButton>(window, "OKButton").click();
    EXPECT_TRUE(bench.journal.back().starts_with("message Dieser Wert ist für CV 52 nicht möglich"));
    EXPECT_EQ(window.result(), 0);
    bench.journal.clear();
    find<QAction>(window, "mnu_saveas").trigger();
    EXPECT_EQ(bench.journal.size(), 1U) << "said, and no file dialog";
    threshold.clear();
    window.show();
    for (const auto& act : {std::function<void()>([&] { find<QPushButton>(window, "OKButton").click(); }),
                            std::function<void()>([&] { find<QAction>(window, "mnu_saveas").trigger(); })}) {
        bench.journal.clear();
        find<QLineEdit>(window, "Text1").setFocus();
        act();
        EXPECT_EQ(bench.journal.size(), 1U) << "an emptied field is told";
        EXPECT_EQ(window.focusWidget(), &threshold);
    }
    threshold.setText(QStringLiteral("96"));
    find<QPushButton>(window, "OKButton").click();
    EXPECT_EQ(window.result(), QDialog::Accepted);
    ASSERT_EQ(window.plan().size(), 4U);
    EXPECT_EQ(window.plan()[1].value, 96);
}

TEST(Bremsen, EnterEndsAnEntryAndNeverWrites)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    window.show();
    auto& field = find<QLineEdit>(window, "Text1");
    field.setText(QStringLiteral("300"));
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(bench.journal.size(), 1U) << "refused";
    field.setText(QStringLiteral("30"));
    QTest::keyClick(&field, Qt::Key_Enter);
    EXPECT_TRUE(window.isVisible());
    find<QAction>(window, "mnu_aktuell").trigger();
    EXPECT_TRUE(window.close()) << "nothing to lose";
}

TEST(Bremsen, SavesAFileOfItsOwn)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    bench.prompts.chooseFile("abs/mine.bcr");
    find<QAction>(window, "mnu_saveas").trigger();
    EXPECT_EQ(bench.journal.back(), "save *.bcr in abs or *.kvr in lists: ");
    const Bytes& content = bench.files.content["abs/mine.bcr"];
    const std::string text(content.begin(), content.end());
    EXPECT_TRUE(text.starts_with("CV-Nummer;CV-Wert;CV-Text;\r\n48;10;Bremswert "));
    EXPECT_TRUE(text.ends_with("\r\nEnde CV\r\n"));
}

} // namespace karvo::test
