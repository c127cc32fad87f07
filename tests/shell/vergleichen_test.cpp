#include "workbench/forms/vergleichen.h"

#include "form_bench.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

#include <QCheckBox>

namespace karvo::test
{
namespace
{

struct CompareBench : FormBench {
    CompareBench()
    {
        put("a.kvr", smallList("Standard KV07*6", "1;3;eins;\r\n14;7;x;\r\n70;200;FS;\r\n84;9;FS;\r\n"));
        put("b.kvr", smallList("Standard KV07*6", "1;3;eins;\r\n11;4;y;\r\n70;201;FS;\r\n84;9;FS;\r\n"));
        put("old.kvr", smallList("Standard KV04*6", "1;3;eins;\r\n", "ATmega168"));
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "anderes "));
    }

    void open(Vergleichen& window, const char* item, const char* name)
    {
        prompts.chooseFile("lists/" + std::string(name));
        find<QAction>(window, item).trigger();
    }
    static std::vector<std::string> lines(Vergleichen& window)
    {
        std::vector<std::string> texts;
        auto& list = find<QListWidget>(window, "List1");
        for (int row = 0; row < list.count(); ++row)
            texts.push_back(list.item(row)->text().toStdString());
        return texts;
    }
    static std::string label(Vergleichen& window, const char* name)
    {
        return find<QLabel>(window, name).text().toStdString();
    }
};

using Lines = std::vector<std::string>;

} // namespace

TEST(Vergleichen, ShowsTwoFilesSideBySide)
{
    CompareBench bench;
    Vergleichen window(bench.bench);
    EXPECT_FALSE(find<QPushButton>(window, "Command1").isEnabled());
    EXPECT_EQ(bench.label(window, "SecondSide"), "Rechts: noch keine Liste");
    bench.open(window, "mnu_saved", "a.kvr");
    EXPECT_EQ(bench.journal.back(), "open *.kvr in lists: ");
    bench.open(window, "mnu_saved_2", "b.kvr");
    EXPECT_EQ(bench.lines(window), (Lines{"CV1 = 3\t3", "CV11 = ---\t4", "CV14 = 7\t---",
                                          "  14 (CV84) = 9\t9", "  28  (CV70) = 200\t201"}));
    EXPECT_EQ(bench.label(window, "FirstSide"), "Links: lists/a.kvr");
    EXPECT_EQ(bench.label(window, "SecondSide"), "Rechts: lists/b.kvr");
    EXPECT_EQ(bench.label(window, "Label1"), "Texte von =   KV07");
    EXPECT_EQ(bench.label(window, "Counts"), "2 gleich, 1 verschieden, 1 nur links, 1 nur rechts");
    auto& list = find<QListWidget>(window, "List1");
    EXPECT_EQ(list.item(4)->data(Qt::AccessibleTextRole).toString().toStdString(),
              "  28  (CV70) = 200, 201, verschieden, Wort 70");

    find<QCheckBox>(window, "OnlyDifferences").setChecked(true);
    EXPECT_EQ(bench.lines(window), (Lines{"CV11 = ---\t4", "CV14 = 7\t---", "  28  (CV70) = 200\t201"}));
    find<QAction>(window, "mnu_KV05").trigger();
    EXPECT_EQ(bench.label(window, "Label1"), "Texte von =   KV05");
    EXPECT_TRUE(list.item(0)->data(Qt::AccessibleTextRole).toString().endsWith(QStringLiteral("anderes 11")));
}

TEST(Vergleichen, TheListOfTheMainWindowStandsOnTheLeft)
{
    CompareBench bench;
    ASSERT_TRUE(openList(bench.bench, "lists/a.kvr"));
    Vergleichen window(bench.bench);
    EXPECT_EQ(bench.label(window, "FirstSide"), "Links: KV07  Firmware = 6 | a.kvr");
    bench.open(window, "mnu_saved_2", "b.kvr");
    EXPECT_EQ(bench.lines(window).size(), 5U);
    // Another processor: three lines, and nothing is compared.
    bench.open(window, "mnu_saved_2", "old.kvr");
    EXPECT_TRUE(bench.journal.back().starts_with("message In der Datei ist ein ATmega168\r\n"));
    EXPECT_TRUE(bench.journal.back().ends_with("\r\nCVs können nicht verglichen werden."));
    EXPECT_TRUE(bench.lines(window).empty());
    EXPECT_FALSE(find<QPushButton>(window, "SaveResult").isEnabled());
}

TEST(Vergleichen, EachModelHasItsDescriptionInEachLanguage)
{
    const struct {
        const char* item;
        int language;
        const char* file;
        const char* label;
    } cases[] = {
        {"mnu_KV04", 1, "CV_Standart180.txt", "=   KV04"},
        {"mnu_KV04_neu", 1, "CV_Standart172.txt", "=   KV04"},
        {"mnu_KV05", 1, "CV_Standart172_v1_5.txt", "=   KV05"},
        {"mnu_KV06", 1, "CV_Standart172_v1_6.txt", "=   KV06"},
        {"mnu_KV07", 1, "CV_Standart_kv07.txt", "=   KV07"},
        {"mnu_KV07", 2, "CV_Standart_kv07nl.txt", "=   KV07"},
        {"mnu_KV07", 3, "CV_Standart_kv07en.txt", "=   KV07"},
        {"mnu_KV07", 4, "CV_Standart_kv07es.txt", "=   KV07"},
        {"mnu_KV07", 5, "CV_Standart_kv07fr.txt", "=   KV07"},
        {"mnu_KV08", 1, "CV_Standart_kv08.txt", "=   KV08"},
        {"mnu_KV08", 2, "CV_Standart_kv08nl.txt", "=   KV08"},
        {"mnu_KV08", 3, "CV_Standart_kv08en.txt", "=   KV08"},
        {"mnu_KV08", 4, "CV_Standart_kv08es.txt", "=   KV08"},
        {"mnu_KV08", 5, "CV_Standart_kv08fr.txt", "=   KV08"},
        {"mnu_karvo_xt_list", 1, "CV_Standart_receiver.txt", "=  KV-XT"},
        {"mnu_karvo_xt_list", 2, "CV_Standart_receiver_nl.txt", "=  KV-XT"},
        {"mnu_karvo_xt_list", 3, "CV_Standart_receiver_en.txt", "=  KV-XT"},
        {"mnu_karvo_xt_list", 4, "CV_Standart_receiver_es.txt", "=  KV-XT"},
        {"mnu_karvo_xt_list", 5, "CV_Standart_receiver_fr.txt", "=  KV-XT"},
    };
    for (const auto& [item, language, file, expected] : cases) {
        FormBench bench;
        ASSERT_TRUE(useLanguage(bench.bench, static_cast<LanguageCode>(language)));
        Vergleichen window(bench.bench);
        find<QAction>(window, item).trigger();
        ASSERT_FALSE(bench.journal.empty()) << item;
        EXPECT_NE(bench.journal.back().find(file), std::string::npos) << "missing: " << bench.journal.back();
        bench.journal.clear();
        bench.addFile(file, smallDescription("Standard", "Wort "));
        find<QAction>(window, item).trigger();
        EXPECT_TRUE(bench.journal.empty()) << file << ": " << bench.journal.back();
        EXPECT_TRUE(find<QLabel>(window, "Label1").text().endsWith(QString::fromLatin1(expected))) << file;
    }
}

TEST(Vergleichen, LooksValuesUp)
{
    CompareBench bench;
    Vergleichen window(bench.bench);
    bench.open(window, "mnu_saved_2", "b.kvr");
    bench.prompts.type(u"");
    find<QPushButton>(window, "Command2").click();
    EXPECT_TRUE(bench.lines(window).empty());
    bench.prompts.type(u"9");
    find<QPushButton>(window, "Command2").click();
    bench.prompts.type(u"CV70");
    find<QPushButton>(window, "Command2").click();
    EXPECT_EQ(bench.lines(window),
              (Lines{"Werte aus der Datei: CV84 = 9", "Werte aus der Datei: CV70 = 201"}));
}

TEST(Vergleichen, TheExpertPasswordIsExact)
{
    CompareBench bench;
    bench.addFile("CV_exp_kv07.txt", "Head\r\n1;;tief;;;;Wissen;\r\n");
    ASSERT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
    Vergleichen window(bench.bench);
    auto& on = find<QAction>(window, "mnu_expert_ein");
    auto& off = find<QAction>(window, "mnu_expert_aus");
    bench.prompts.type(u"ROFU");
    on.trigger();
    EXPECT_FALSE(bench.state.expert);
    EXPECT_TRUE(on.isVisible() && !off.isVisible());
    EXPECT_EQ(bench.settings.values.count("Parameter/Expert"), 0U);
    EXPECT_TRUE(bench.journal.back().starts_with("message Das Passwort ist nicht richtig"));
    bench.prompts.type(u"Rofu");
    on.trigger();
    EXPECT_EQ(bench.settings.values["Parameter/Expert"], u"1");
    EXPECT_TRUE(off.isVisible() && !on.isVisible());
    EXPECT_EQ(bench.state.set.list[1].text, u"    Experte: Wissen");
    off.trigger();
    EXPECT_EQ(bench.settings.values["Parameter/Expert"], u"0");
    EXPECT_EQ(bench.state.set.list[1].text, u"CV2  = 1");
}

TEST(Vergleichen, SavesTheResult)
{
    CompareBench bench;
    Vergleichen window(bench.bench);
    bench.open(window, "mnu_saved", "a.kvr");
    bench.open(window, "mnu_saved_2", "b.kvr");
    bench.prompts.chooseFile("lists/result.txt");
    find<QAction>(window, "SaveAsText").trigger();
    EXPECT_NE(bench.saved("result.txt").find("\r\nCV1 = 3\t3\tgleich\tWort 1\r\n"), std::string::npos);
    bench.prompts.chooseFile("lists/result.csv");
    find<QAction>(window, "SaveAsCsv").trigger();
    EXPECT_NE(bench.saved("result.csv").find("\r\n70;200;201;verschieden;Wort 70\r\n"), std::string::npos);
}

} // namespace karvo::test
