#include "editors/forms/bremsen.h"

#include "shell/form_bench.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

struct BrakingBench : FormBench {
    BrakingBench()
    {
        state.userFolders.distances.own = "abs";
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
        for (const auto& name : wordsOf("Text1 Text2 Text3 Text4"))
            text += fieldOf(window, name) + " ";
        return text;
    }
};

TEST(Bremsen, LoadsPresetsIntoItsFieldsAlone)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    EXPECT_EQ(bench.fields(window), "10 30 40 100 ");
    const std::pair<const char*, const char*> items[] = {{"mnu_Faller", "10 22 33 111 "}, // CV48 stays
                                                         {"mnu_L_Faller", "11 22 33 111 "},
                                                         {"mnu_L_CI46", "11 22 33 112 "},
                                                         {"mnu_aktuell", "10 30 40 100 "}};
    for (const auto& [item, fields] : items) {
        trigger(window, item);
        EXPECT_EQ(bench.fields(window), fields) << item;
    }
    EXPECT_NE(joined(bench.journal).find("abs/CI_46.bcr"), std::string::npos);
    EXPECT_NE(joined(bench.journal).find("Zeile 3"), std::string::npos);
    trigger(window, "mnu_L_CI26"); // there is none
    EXPECT_NE(bench.journal.back().find("abs/CI_26.bcr"), std::string::npos);
    bench.prompts.chooseFile("abs/Faller.bcr");
    trigger(window, "menu_L_Datei");
    EXPECT_EQ(bench.journal.back(), "open *.bcr in abs: ");
    EXPECT_EQ(bench.fields(window), "11 22 33 111 ");
    EXPECT_EQ(bench.state.set.table.value(53), 30);
    Bremsen other(bench.bench, "Faller.bcr");
    EXPECT_EQ(bench.fields(other), "10 22 33 111 ");
}

TEST(Bremsen, RefusesValuesOutsideTheirRangeOnceAndAtTheirField)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    window.show();
    auto& threshold = find<QLineEdit>(window, "Text4");
    const std::function<void()> acts[] = {[&] { click(window, "OKButton"); },
                                          [&] { trigger(window, "mnu_saveas"); }};
    for (const QString& wrong : {QStringLiteral("95"), QString()}) {
        threshold.setText(wrong);
        for (const auto& act : acts) {
            bench.journal.clear();
            find<QLineEdit>(window, "Text1").setFocus();
            act();
            ASSERT_EQ(bench.journal.size(), 1U) << "said, and no file dialog";
            EXPECT_TRUE(wrong.isEmpty() ||
                        bench.journal[0].starts_with("message Dieser Wert ist für CV 52 nicht möglich"));
            EXPECT_EQ(window.focusWidget(), &threshold);
            EXPECT_EQ(window.result(), 0);
        }
    }
    threshold.setText(QStringLiteral("96"));
    click(window, "OKButton");
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
    for (const auto& [typed, refusals] : {std::pair{"300", 1U}, {"30", 1U}}) {
        field.setText(QString::fromLatin1(typed));
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(bench.journal.size(), refusals) << typed;
    }
    trigger(window, "mnu_aktuell");
    EXPECT_TRUE(window.close()) << "nothing to lose";
}

TEST(Bremsen, SavesAFileOfItsOwn)
{
    BrakingBench bench;
    Bremsen window(bench.bench, {});
    bench.prompts.chooseFile("abs/mine.bcr");
    trigger(window, "mnu_saveas");
    EXPECT_EQ(bench.journal.back(), "save *.bcr in abs or *.kvr in lists: ");
    const Bytes& content = bench.files.content["abs/mine.bcr"];
    const std::string text(content.begin(), content.end());
    EXPECT_TRUE(text.starts_with("CV-Nummer;CV-Wert;CV-Text;\r\n48;10;Bremswert "));
    EXPECT_TRUE(text.ends_with("\r\nEnde CV\r\n"));
}

} // namespace karvo::test
