#include "workbench/forms/vergleichen.h"

#include "shell/form_bench.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

struct CompareBench : FormBench {
    std::optional<Vergleichen> window_;

    CompareBench()
    {
        put("a.kvr", smallList("Standard KV07*6", "1;3;eins;\r\n14;7;x;\r\n70;200;FS;\r\n84;9;FS;\r\n"));
        put("b.kvr", smallList("Standard KV07*6", "1;3;eins;\r\n11;4;y;\r\n70;201;FS;\r\n84;9;FS;\r\n"));
        put("old.kvr", smallList("Standard KV04*6", "1;3;eins;\r\n", "ATmega168"));
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "anderes "));
    }
    Vergleichen& window() { return window_ ? *window_ : window_.emplace(bench); }
    void choose(const char* item) { trigger(window(), item); }
    void choose(const char* item, const char* file)
    {
        prompts.chooseFile("lists/" + std::string(file));
        choose(item);
    }
    QListWidget& list() { return find<QListWidget>(window(), "List1"); }
    std::string lines()
    {
        std::string texts;
        for (int row = 0; row < list().count(); ++row)
            texts += list().item(row)->text().replace(u'\t', u' ').toStdString() + ";";
        return texts;
    }
    std::string spoken(int row)
    {
        return list().item(row)->data(Qt::AccessibleTextRole).toString().toStdString();
    }
    std::string label(const char* name) { return labelOf(window(), name); }
};

TEST(Vergleichen, ShowsTwoFilesSideBySideAndSavesTheResult)
{
    CompareBench bench;
    EXPECT_FALSE(find(bench.window(), "Command1").isEnabled());
    EXPECT_EQ(bench.label("SecondSide"), "Rechts: noch keine Liste");
    bench.choose("mnu_saved", "a.kvr");
    EXPECT_EQ(bench.journal.back(), "open *.kvr in lists: ");
    bench.choose("mnu_saved_2", "b.kvr");
    EXPECT_EQ(bench.lines(), "CV1 = 3 3;CV11 = --- 4;CV14 = 7 ---;  14 (CV84) = 9 9;  28  (CV70) = 200 201;");
    EXPECT_EQ(bench.label("FirstSide"), "Links: lists/a.kvr");
    EXPECT_EQ(bench.label("SecondSide"), "Rechts: lists/b.kvr");
    EXPECT_EQ(bench.label("Label1"), "Texte von =   KV07");
    EXPECT_EQ(bench.label("Counts"), "2 gleich, 1 verschieden, 1 nur links, 1 nur rechts");
    EXPECT_EQ(bench.spoken(4), "  28  (CV70) = 200, 201, verschieden, Wort 70");
    bench.choose("SaveAsText", "result.txt");
    EXPECT_NE(bench.saved("result.txt").find("\r\nCV1 = 3\t3\tgleich\tWort 1\r\n"), std::string::npos);
    bench.choose("SaveAsCsv", "result.csv");
    EXPECT_NE(bench.saved("result.csv").find("\r\n70;200;201;verschieden;Wort 70\r\n"), std::string::npos);

    click(bench.window(), "OnlyDifferences");
    EXPECT_EQ(bench.lines(), "CV11 = --- 4;CV14 = 7 ---;  28  (CV70) = 200 201;");
    bench.choose("mnu_KV05");
    EXPECT_EQ(bench.label("Label1"), "Texte von =   KV05");
    EXPECT_TRUE(bench.spoken(0).ends_with("anderes 11"));
    // Another processor: nothing is compared.
    bench.choose("mnu_saved_2", "old.kvr");
    EXPECT_TRUE(bench.journal.back().ends_with("\r\nCVs können nicht verglichen werden."));
    EXPECT_EQ(bench.lines(), "");
    EXPECT_FALSE(find(bench.window(), "SaveResult").isEnabled());
}

TEST(Vergleichen, TheListOfTheMainWindowStandsOnTheLeftAndValuesAreLookedUp)
{
    CompareBench bench;
    ASSERT_TRUE(openList(bench.bench, "lists/a.kvr"));
    EXPECT_EQ(bench.label("FirstSide"), "Links: KV07  Firmware = 6 | a.kvr");
    bench.choose("mnu_saved_2", "b.kvr");
    EXPECT_EQ(bench.list().count(), 5);
    const std::string before = bench.lines();
    bench.prompts.type(u"");
    click(bench.window(), "Command2");
    EXPECT_EQ(bench.lines(), before);
    for (const Text& wanted : {Text(u"9"), Text(u"CV70")}) {
        bench.prompts.type(wanted);
        click(bench.window(), "Command2");
    }
    EXPECT_TRUE(bench.lines().ends_with("Werte aus der Datei: CV84 = 9;Werte aus der Datei: CV70 = 201;"));
}

TEST(Vergleichen, TheExpertPasswordIsExact)
{
    CompareBench bench;
    bench.addFile("CV_exp_kv07.txt", "Head\r\n1;;tief;;;;Wissen;\r\n");
    ASSERT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
    const auto expectExpert = [&](bool expert, const Text& stored) {
        EXPECT_EQ(bench.state.expert, expert);
        EXPECT_EQ(find<QAction>(bench.window(), "mnu_expert_ein").isVisible(), !expert);
        EXPECT_EQ(find<QAction>(bench.window(), "mnu_expert_aus").isVisible(), expert);
        EXPECT_EQ(bench.settings.values["Parameter/Expert"], stored);
        EXPECT_EQ(bench.state.set.list[1].text, expert ? u"    Experte: Wissen" : u"CV2  = 1");
    };
    bench.prompts.type(u"ROFU");
    bench.choose("mnu_expert_ein");
    expectExpert(false, u"");
    EXPECT_TRUE(bench.journal.back().starts_with("message Das Passwort ist nicht richtig"));
    bench.prompts.type(u"Rofu");
    bench.choose("mnu_expert_ein");
    expectExpert(true, u"1");
    bench.choose("mnu_expert_aus");
    expectExpert(false, u"0");
}

} // namespace karvo::test
