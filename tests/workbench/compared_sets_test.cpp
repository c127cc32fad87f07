#include "workbench/compared_sets.h"

#include "support/test_bench.h"
#include "workbench/list_files.h"

namespace karvo::test
{

class ComparedSetsTest : public testing::Test, protected TestBench
{
protected:
    ComparedSetsTest()
    {
        numberEveryText(state.texts);
        setTexts(state.texts, {{1, u"cannot open"}}, {{21, u"Firmware"}, {223, u"vehicle {1}"}});
        put("a.kvr", "Standard KV07*6", "1;3;eins;0;255;1;\r\n14;7;x;\r\n84;9;FS;\r\n");
        put("b.kvr", "Standard KV07*6", "1;3;eins;0;255;1;\r\n11;4;y;\r\n84;8;FS;\r\n");
        put("old.kvr", "Standard KV04*6", "1;3;eins;0;255;1;\r\n", "ATmega168");
        put("damaged.kvr", "Standard KV08*6", "1;3;eins;0;255;1;\r\n300;1;x;\r\n");
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "anderes "));
    }
    void put(const std::string& name, const std::string& header, const std::string& rows,
             const std::string& processor = "ATmega328")
    {
        files.content[name] = bytesOf(header + "\r\n" + rows + "Ende CV\r\n" + processor +
                                      "\r\nFirmware_Version: 6\r\nEnde FS\r\n");
    }
    // Label, values and name of each line.
    static std::string linesOf(ComparedSets& sets)
    {
        std::string text;
        const auto comparison = sets.compare();
        for (const ComparisonLine& one : comparison ? comparison->lines : std::vector<ComparisonLine>())
            text += utf8FromText(one.label + one.firstValue + u" " + one.secondValue + u" " + one.name) + ";";
        return text;
    }
};

TEST_F(ComparedSetsTest, TwoFilesStandSideBySideInTheWordsOfTheirModelOrOfAChosenOne)
{
    ComparedSets sets(bench);
    EXPECT_EQ(sets.firstName() + sets.secondName() + sets.modelLabel(), u"");
    EXPECT_TRUE(sets.openSecond("old.kvr"));
    EXPECT_EQ(sets.modelLabel(), u"  KV04");
    EXPECT_EQ(sets.compare(), std::nullopt) << "a side is missing";
    EXPECT_TRUE(sets.openFirst("a.kvr"));
    EXPECT_EQ(sets.modelLabel(), u"  KV07") << "of the first side";
    journal.clear();
    EXPECT_EQ(linesOf(sets), "") << "of another processor";
    EXPECT_TRUE(journal.size() == 1 && journal[0].starts_with("message m"));
    EXPECT_TRUE(sets.openSecond("b.kvr"));
    EXPECT_EQ(linesOf(sets), "CV1 = 3 3 Wort 1;CV11 = --- 4 Wort 11;CV14 = 7 --- Wort 14;"
                             "  14 (CV84) = 9 8 Wort 84;");
    EXPECT_EQ(sets.firstName() + sets.secondName() + sets.modelLabel(), u"a.kvrb.kvr  KV07");
    EXPECT_TRUE(sets.chooseModel("mnu_KV05"));
    EXPECT_EQ(sets.modelLabel(), u"  KV05");
    EXPECT_EQ(linesOf(sets).substr(0, 19), "CV1 = 3 3 anderes 1");
    EXPECT_FALSE(sets.openFirst("none.kvr") || sets.openSecond("none.kvr"));
    EXPECT_EQ(sets.firstName() + sets.secondName(), u"a.kvrb.kvr") << "as they were";
    journal.clear();
    EXPECT_TRUE(sets.openSecond("damaged.kvr"));
    EXPECT_TRUE(joined(journal).starts_with("message m713")) << "what is not sound is told";
}

TEST_F(ComparedSetsTest, TheSetOnTheBenchIsTheFirstSide)
{
    ASSERT_TRUE(openList(bench, "a.kvr"));
    ComparedSets sets(bench);
    ASSERT_TRUE(sets.openSecond("b.kvr"));
    EXPECT_EQ(sets.firstName(), u"KV07  Firmware = 6 | a.kvr");
    EXPECT_EQ(sets.modelLabel(), u"  KV07");
    EXPECT_EQ(linesOf(sets), "CV1 = 3 3 eins;CV11 = --- 4 ;CV14 = 7 --- x;  14 (CV84) = 9 8 FS;");
    state.set.offlineItem.clear(); // a vehicle
    EXPECT_EQ(sets.firstName(), u"vehicle KV07  Firmware = 6 | a.kvr");
    state.set.profile.model = Model::receiver;
    EXPECT_EQ(sets.modelLabel(), u" KV-XT");
    EXPECT_NE(linesOf(sets).find("CV84 = 9 8"), std::string::npos) << "it has no speed table";
}

TEST_F(ComparedSetsTest, LooksAValueUpInTheSecondSideElseInTheFirst)
{
    ComparedSets sets(bench);
    EXPECT_EQ(sets.lookUp(u"9"), std::nullopt);
    ASSERT_TRUE(sets.openFirst("a.kvr"));
    EXPECT_TRUE(sets.lookUp(u"9")->ends_with(u"CV84 = 9"));
    ASSERT_TRUE(sets.openSecond("b.kvr"));
    EXPECT_TRUE(sets.lookUp(u"CV84")->ends_with(u"CV84 = 8"));
    EXPECT_EQ(sets.lookUp(u""), std::nullopt);
}

TEST_F(ComparedSetsTest, EachModelHasItsDescription)
{
    const struct {
        const char* item;
        const char* file;
        TextView label;
    } cases[] = {
        {"mnu_KV04", "CV_Standart180.txt", u"  KV04"},
        {"mnu_KV04_neu", "CV_Standart172.txt", u"  KV04"},
        {"mnu_KV05", "CV_Standart172_v1_5.txt", u"  KV05"},
        {"mnu_KV06", "CV_Standart172_v1_6.txt", u"  KV06"},
        {"mnu_KV07", "CV_Standart_kv07.txt", u"  KV07"},
        {"mnu_KV08", "CV_Standart_kv08.txt", u"  KV08"},
        {"mnu_karvo_xt_list", "CV_Standart_receiver.txt", u" KV-XT"},
    };
    for (const auto& [item, file, label] : cases) {
        ComparedSets sets(bench);
        files.content.erase(std::filesystem::path("program") / file);
        EXPECT_FALSE(sets.chooseModel(item)) << item;
        EXPECT_NE(journal.back().find(file), std::string::npos) << journal.back();
        addFile(file, smallDescription("Standard", "Wort "));
        EXPECT_TRUE(sets.chooseModel(item)) << item;
        EXPECT_EQ(sets.modelLabel(), label);
    }
    EXPECT_EQ(comparedModels().size(), std::size(cases));
    state.language = LanguageCode::french;
    EXPECT_FALSE(ComparedSets(bench).chooseModel("mnu_KV08"));
    EXPECT_NE(journal.back().find("CV_Standart_kv08fr.txt"), std::string::npos) << journal.back();
}

} // namespace karvo::test
